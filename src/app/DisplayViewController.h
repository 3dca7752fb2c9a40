#pragma once

#include "view/ViewController.h"
#include "view/outlets/SegmentedControl.h"

/// The screen for the display settings of this device: theme and text size.
class DisplayViewController : public ViewController {
  Q_OBJECT
  QML_NAMED_ELEMENT(DisplayViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(SegmentedControl, segmTheme)
  OUTLET(SegmentedControl, segmTextSize)

 public:
  explicit DisplayViewController(Environment &environment, QObject *parent = nullptr);

  void viewDidLoad() override;
  void segmThemeValueChanged();
  void segmTextSizeValueChanged();
};
