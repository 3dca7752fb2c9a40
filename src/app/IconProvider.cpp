#include "app/IconProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
  QFile file(QStringLiteral(":/qt/qml/CartonPick/icons/%1.svg").arg(id.section(u'/', 0, 0)));
  if (!file.open(QIODevice::ReadOnly)) {
    return {};
  }
  const QByteArray colour = '#' + id.section(u'/', 1).toLatin1();
  QSvgRenderer icon(file.readAll().replace("currentColor", colour));
  *size = requestedSize.isEmpty() ? icon.defaultSize() : requestedSize;
  QImage image(*size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  icon.render(&painter);
  return image;
}
