#pragma once

#include "model/deliveries.h"

#include <filesystem>

namespace cartonpick::orders {

/// Reads a deliveries file: CSV when its name ends in ".csv", else JSON. Throws InputError that
/// starts with the file's name.
Deliveries readDeliveryFile(const std::filesystem::path &file);

}  // namespace cartonpick::orders
