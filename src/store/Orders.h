#pragma once

#include "store/Picking.h"

/// Declared in the store with the attributes of `Picking`; nothing reads or writes its rows.
struct Orders : Picking {};
