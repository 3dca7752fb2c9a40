#include "picking/DeliveryLabels.h"

#include "delivery/DeliveryImport.h"
#include "view/outlets/Label.h"

void DeliveryLabels::show(const Delivery &delivery) const {
  customer.setText(QStringLiteral("Customer: ") + delivery.cusname);
  brand.setText(QStringLiteral("Brand: ") + delivery.brand);
  created.setText(QStringLiteral("Date Created: ") + headerDate(delivery.cdate));
  shipped.setText(QStringLiteral("Date Shipped: ") + headerDate(delivery.date));
  for (Label *label : {&customer, &brand, &created, &shipped}) {
    label->setHidden(false);
  }
}

void DeliveryLabels::hide() const {
  for (Label *label : {&customer, &brand, &created, &shipped}) {
    label->setHidden(true);
  }
}
