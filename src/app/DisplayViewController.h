#pragma once

#include "view/ViewController.h"
#include "view/outlets/SegmentedControl.h"

/// How the program looks on this device: its theme and the size of its text.
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
