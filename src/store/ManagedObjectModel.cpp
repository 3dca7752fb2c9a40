#include "store/ManagedObjectModel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

std::vector<ManagedObjectModel::Attribute> readAttributes(const QJsonObject &attributes) {
  std::vector<ManagedObjectModel::Attribute> result;
  for (auto it = attributes.begin(); it != attributes.end(); ++it) {
    result.push_back({it.key(), it.value().toString()});
  }
  return result;
}

std::vector<QStringList> readIndexes(const QJsonArray &indexes) {
  std::vector<QStringList> result;
  for (const auto index : indexes) {
    result.push_back(index.toVariant().toStringList());
  }
  return result;
}

}  // namespace

ManagedObjectModel::ManagedObjectModel(const QString &url) {
  QFile file(url);
  if (!file.open(QIODevice::ReadOnly)) {
    return;
  }
  const QJsonObject model = QJsonDocument::fromJson(file.readAll()).object();
  const QJsonObject entities = model[u"entities"].toObject();
  const QJsonObject indexes = model[u"indexes"].toObject();
  m_version = model[u"version"].toInt();
  for (auto it = entities.begin(); it != entities.end(); ++it) {
    m_entities.push_back({it.key(), readAttributes(it.value().toObject()),
                          readIndexes(indexes[it.key()].toArray())});
  }
}

QString ManagedObjectModel::bundledUrl() {
  return QStringLiteral(":/QIR_Pick.momd");
}
