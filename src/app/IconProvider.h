#pragma once

#include <QQuickImageProvider>

/// Draws the program's icons in any colour. The image ID "NAME/COLOUR" selects
/// resources/icons/NAME.svg with "currentColor" replaced by COLOUR (AARRGGBB in hex, for example
/// ff0b6430).
class IconProvider : public QQuickImageProvider {
 public:
  IconProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

  /// Returns a null image if there is no such icon.
  QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
