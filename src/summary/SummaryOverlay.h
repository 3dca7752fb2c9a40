#pragma once

#include "delivery/PickRecords.h"

#include <QRectF>

#include <memory>

class ViewController;
class deliveryDetailsViewController;
struct Environment;

/// Shows the summary of `lines` over the view of `host`, with a flip.
///
/// @param current  the summary returned by the last call, or nullptr. If it is still shown, it
///                 flips out and in again with the new lines; otherwise it is deleted and a new one
///                 is created.
/// @param frame    the position and size of a new summary in the view, in points; empty to fill it
/// @returns the summary on screen, owned by `host`
deliveryDetailsViewController *showSummary(ViewController &host, Environment &environment,
                                           deliveryDetailsViewController *current,
                                           std::shared_ptr<const ItemLines> lines,
                                           const QRectF &frame = {});
