#pragma once

#include "store/Picking.h"

/// A table of the store with the attributes of `Picking`. No code reads or writes its rows.
struct Orders : Picking {};
