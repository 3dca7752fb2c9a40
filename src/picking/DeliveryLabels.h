#pragma once

class Label;
struct Delivery;

/// Shows the header of a delivery in the labels of the master pane.
struct DeliveryLabels {
  Label &customer;
  Label &brand;
  Label &created;
  Label &shipped;

  void show(const Delivery &delivery) const;
  void hide() const;
};
