#include "app/DisplayViewController.h"

#include "view/Environment.h"

#include <algorithm>

namespace {

constexpr std::array kThemes{DisplaySettings::Theme::System, DisplaySettings::Theme::Light,
                             DisplaySettings::Theme::Dark};

template <class Values, class Value>
int positionOf(const Value &value, const Values &values) {
  return static_cast<int>(std::find(values.begin(), values.end(), value) - values.begin());
}

QStringList textSizeTitles() {
  QStringList titles;
  for (const int percent : DisplaySettings::kTextSizes) {
    titles.append(QStringLiteral("%1 %").arg(percent));
  }
  return titles;
}

}  // namespace

DisplayViewController::DisplayViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("DisplayViewController"), environment, parent) {
  segmTheme->setTitles({QStringLiteral("System"), QStringLiteral("Light"), QStringLiteral("Dark")});
  segmTextSize->setTitles(textSizeTitles());
  setPreferredContentSize({640, 480});
}

void DisplayViewController::viewDidLoad() {
  const DisplaySettings &display = *environment().display;
  segmTheme->setSelectedSegmentIndex(positionOf(display.theme(), kThemes));
  segmTextSize->setSelectedSegmentIndex(
      positionOf(display.textSize(), DisplaySettings::kTextSizes));
  connect(segmTheme, &SegmentedControl::valueChanged, this,
          &DisplayViewController::segmThemeValueChanged);
  connect(segmTextSize, &SegmentedControl::valueChanged, this,
          &DisplayViewController::segmTextSizeValueChanged);
}

void DisplayViewController::segmThemeValueChanged() {
  const auto index = static_cast<std::size_t>(segmTheme->selectedSegmentIndex());
  environment().display->setTheme(kThemes.at(index));
}

void DisplayViewController::segmTextSizeValueChanged() {
  const auto index = static_cast<std::size_t>(segmTextSize->selectedSegmentIndex());
  environment().display->setTextSize(DisplaySettings::kTextSizes.at(index));
}
