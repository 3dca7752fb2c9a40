#include "app/MainStoryboard.h"

#include "app/DisplayViewController.h"
#include "app/splitViewController.h"
#include "app/startViewController.h"
#include "delivery/PickingSession.h"
#include "history/HistoryViewController.h"
#include "picking/changeQuantityViewController.h"
#include "picking/detailViewController.h"
#include "picking/masterViewController.h"
#include "summary/deliveryDetailsViewController.h"
#include "view/Environment.h"

namespace {

template <class Controller>
ViewController *make(Environment &environment, QObject *owner) {
  return new Controller(environment, owner);
}

ViewController *makeSplitView(Environment &environment, QObject *owner) {
  auto *session = new PickingSession(*environment.clock, environment.rules);
  auto *master = new masterViewController(*session, environment);
  auto *detail = new detailViewController(*session, environment);
  QObject::connect(session, &PickingSession::started, detail,
                   [master, detail] { detail->setDelegate(master); });
  auto *split = new splitViewController(master, detail, environment, owner);
  session->setParent(split);
  return split;
}

}  // namespace

void fillMainStoryboard(Storyboard &storyboard) {
  storyboard.addScene(QStringLiteral("startViewController"), make<startViewController>);
  storyboard.addScene(QStringLiteral("splitViewController"), makeSplitView);
  storyboard.addScene(QStringLiteral("DisplayViewController"), make<DisplayViewController>);
  storyboard.addScene(QStringLiteral("HistoryViewController"), make<HistoryViewController>);
  storyboard.addScene(QStringLiteral("changeQuantityViewController"),
                      make<changeQuantityViewController>);
  storyboard.addScene(QStringLiteral("deliveryDetailsViewController"),
                      make<deliveryDetailsViewController>);
  storyboard.addSegue(QStringLiteral("segueToSplitView"), QStringLiteral("splitViewController"));
  storyboard.addSegue(QStringLiteral("segueHistory"), QStringLiteral("HistoryViewController"));
  storyboard.addReturnSegue(QStringLiteral("returnFromPickingToStart"));
  storyboard.addReturnSegue(QStringLiteral("returnFromHistoryToStart"));
}
