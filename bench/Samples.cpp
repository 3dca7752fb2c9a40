#include "Samples.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

bool Samples::write(const QString &path) const {
  QJsonArray runs;
  for (const Sample &sample : m_samples) {
    runs.append(QJsonObject{{QStringLiteral("name"), sample.name},
                            {QStringLiteral("run_type"), QStringLiteral("iteration")},
                            {QStringLiteral("real_time"), sample.value},
                            {QStringLiteral("time_unit"), sample.unit}});
  }
  QFile file(path);
  const QByteArray json = QJsonDocument(QJsonObject{{QStringLiteral("benchmarks"), runs}})
                              .toJson(QJsonDocument::Compact);
  return file.open(QIODevice::WriteOnly) && file.write(json) == json.size();
}
