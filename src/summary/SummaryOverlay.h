#pragma once

#include "delivery/PickRecords.h"

#include <QRectF>

#include <memory>

class ViewController;
class deliveryDetailsViewController;
struct Environment;

/// Lays the summary of `lines` over `host`'s view with a flip. If `current` is what lies there, it
/// is flipped out and in again with the new lines; otherwise a new summary, standing at `frame`,
/// takes its place. Returns the summary that is shown.
deliveryDetailsViewController *showSummary(ViewController &host, Environment &environment,
                                           deliveryDetailsViewController *current,
                                           std::shared_ptr<const ItemLines> lines,
                                           const QRectF &frame = {});
