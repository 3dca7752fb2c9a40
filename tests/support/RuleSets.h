#pragma once

#include "delivery/PickingRules.h"

#include <QTest>

/// Adds the column "isCareful" and a row for each of the two sets of rules.
inline void addRuleSets() {
  QTest::addColumn<bool>("isCareful");
  QTest::newRow("standard") << false;
  QTest::newRow("careful") << true;
}

inline PickingRules rulesOf(bool isCareful) {
  return isCareful ? PickingRules::careful() : PickingRules::standard();
}
