#pragma once

#include <QQuickImageProvider>

/// Draws the program's icons in any colour: the image "NAME/COLOUR" is resources/icons/NAME.svg
/// with COLOUR, such as ff0b6430, for its current colour.
class IconProvider : public QQuickImageProvider {
 public:
  IconProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

  /// A null image if there is no such icon.
  QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
