#include "summary/SummaryOverlay.h"

#include "summary/deliveryDetailsViewController.h"
#include "view/Environment.h"

#include <utility>

deliveryDetailsViewController *showSummary(ViewController &host, Environment &environment,
                                           deliveryDetailsViewController *current,
                                           std::shared_ptr<const ItemLines> lines,
                                           const QRectF &frame) {
  const bool isShowing = current != nullptr && host.overlay() == current;
  deliveryDetailsViewController *summary = current;
  if (isShowing) {
    summary->removeFromSuperview(ViewController::Flip::FromRight);
  } else {
    if (current != nullptr) {
      current->deleteLater();
    }
    summary = qobject_cast<deliveryDetailsViewController *>(
        environment.storyboard.instantiateViewController(
            QStringLiteral("deliveryDetailsViewController"), environment, &host));
    summary->setFrame(frame);
  }
  summary->setArrayItems(std::move(lines));
  host.addSubview(summary, ViewController::Flip::FromLeft);
  return summary;
}
