#include "app/startViewController.h"

#include "app/splitViewController.h"
#include "store/ManagedObjectContext.h"
#include "view/Environment.h"
#include "view/NavigationController.h"

namespace {

void handOn(ManagedObjectContext *context, ViewController *destination) {
  if (auto *holder = dynamic_cast<ManagedObjectContextHolder *>(destination)) {
    holder->setManagedObjectContext(context);
  }
}

}  // namespace

startViewController::startViewController(Environment &environment, QObject *parent)
    : ViewController(QStringLiteral("startViewController"), environment, parent) {
  btnPicking->setTitle(QStringLiteral("Picking"));
  btnDemo->setTitle(QStringLiteral("Try the demo"));
  btnDisplay->setTitle(QStringLiteral("Display"));
}

void startViewController::viewDidLoad() {
  const QString host = environment().serviceHost;
  btnDemo->setEnabled(host.isEmpty());
  lblServiceHost->setText(
      host.isEmpty() ? QStringLiteral("No order service is configured. Start the program with "
                                      "--service-host HOST[:PORT], or try it on demo deliveries.")
                     : QStringLiteral("Order service: ") + host);
  lblRules->setText(QStringLiteral("The careful rules are in use."));
  lblRules->setHidden(environment().rules != PickingRules::careful());
  showStore();
}

void startViewController::showStore() {
  const ManagedObjectContext *context = managedObjectContext();
  const bool isRefused =
      environment().rules.reportsUnusableStore && context != nullptr && !context->isUsable();
  btnPicking->setEnabled(!isRefused);
  lblStore->setHidden(!isRefused);
  if (isRefused) {
    lblStore->setTextColor(Colour::red);
    lblStore->setText(
        QStringLiteral("Picking is not possible, because the store cannot be used: %1.")
            .arg(context->errorString()));
  }
}

void startViewController::btnDisplayTouched() {
  presentViewController(environment().storyboard.instantiateViewController(
                            QStringLiteral("DisplayViewController"), environment(), this),
                        PresentationStyle::FormSheet);
}

void startViewController::prepareForSegue(Segue &segue) {
  if (segue.identifier == QStringLiteral("segueHistory")) {
    handOn(managedObjectContext(), segue.destination);
  } else if (segue.identifier == QStringLiteral("segueToSplitView")) {
    const QList<ViewController *> panes = segue.destination->childViewControllers();
    const auto *navigation = qobject_cast<NavigationController *>(panes.at(0));
    handOn(managedObjectContext(), navigation->topViewController());
    handOn(managedObjectContext(), panes.at(1));
  }
}
