#include "support/Picture.h"

#include "support/TestWindow.h"

#include <QColor>
#include <QHash>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace {

int distance(QRgb a, QRgb b) {
  return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
         std::abs(qBlue(a) - qBlue(b));
}

QHash<QRgb, int> coloursOf(const QImage &pixels) {
  QHash<QRgb, int> counts;
  for (int y = 0; y < pixels.height(); ++y) {
    for (int x = 0; x < pixels.width(); ++x) {
      ++counts[pixels.pixel(x, y)];
    }
  }
  return counts;
}

QRgb commonest(const QHash<QRgb, int> &counts) {
  const auto most = std::max_element(counts.cbegin(), counts.cend());
  return most == counts.cend() ? QRgb() : most.key();
}

}  // namespace

Picture::Picture(const TestWindow &ui) : m_pixels(ui.window().grabWindow()) {}

Picture::Picture(const TestWindow &ui, const QString &name) {
  const QImage window = ui.window().grabWindow();
  // Looked up after the frame, which updates the layouts.
  if (QQuickItem *item = ui.item(name)) {
    m_pixels = window.copy(TestWindow::visiblePart(item).toRect());
  }
}

Picture Picture::left(int width) const {
  return part({0, 0, width, m_pixels.height()});
}

Picture Picture::right(int width) const {
  return part({m_pixels.width() - width, 0, width, m_pixels.height()});
}

QString Picture::ground() const {
  return QColor(commonest(coloursOf(m_pixels))).name();
}

QString Picture::ink() const {
  const QHash<QRgb, int> counts = coloursOf(m_pixels);
  const QRgb ground = commonest(counts);
  QRgb ink = ground;
  for (const auto &[colour, count] : counts.asKeyValueRange()) {
    if (distance(colour, ground) > distance(ink, ground)) {
      ink = colour;
    }
  }
  return QColor(ink).name();
}

double Picture::inked(const QString &ink, const QString &ground) const {
  const QRgb inkColour = QColor(ink).rgb();
  const QRgb groundColour = QColor(ground).rgb();
  int count = 0;
  for (int y = 0; y < m_pixels.height(); ++y) {
    for (int x = 0; x < m_pixels.width(); ++x) {
      const QRgb colour = m_pixels.pixel(x, y);
      count += distance(colour, inkColour) < distance(colour, groundColour) ? 1 : 0;
    }
  }
  return static_cast<double>(count) / std::max(1, m_pixels.width() * m_pixels.height());
}

int Picture::topBorder(const QString &colour) const {
  const QRgb wanted = QColor(colour).rgb();
  const int middle = m_pixels.width() / 2;
  int height = 0;
  while (height < m_pixels.height() && m_pixels.pixel(middle, height) == wanted) {
    ++height;
  }
  return height;
}
