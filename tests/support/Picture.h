#pragma once

#include <QImage>
#include <QString>

class TestWindow;

/// Pixels of a window. Colours are texts: "#rrggbb".
class Picture {
 public:
  explicit Picture(QImage pixels) : m_pixels(std::move(pixels)) {}
  /// The whole window.
  explicit Picture(const TestWindow &ui);
  /// The visible part of the item `name`, and what is drawn above it; no pixels if no visible item
  /// has that name.
  Picture(const TestWindow &ui, const QString &name);

  [[nodiscard]] const QImage &pixels() const { return m_pixels; }
  /// The part `rect`, in pixels of this picture.
  [[nodiscard]] Picture part(const QRect &rect) const { return Picture(m_pixels.copy(rect)); }
  /// The `width` leftmost or rightmost columns.
  [[nodiscard]] Picture left(int width) const;
  [[nodiscard]] Picture right(int width) const;

  /// The colour of most pixels.
  [[nodiscard]] QString ground() const;
  /// The colour that differs most from the ground: that of a text or an icon, whose edges are
  /// mixtures of both colours.
  [[nodiscard]] QString ink() const;
  /// The share of the pixels, from 0 to 1, that are nearer to the colour `ink` than to `ground`.
  [[nodiscard]] double inked(const QString &ink, const QString &ground) const;
  /// The number of adjacent pixels of `colour` at the upper end of the middle column.
  [[nodiscard]] int topBorder(const QString &colour) const;

 private:
  QImage m_pixels;
};
