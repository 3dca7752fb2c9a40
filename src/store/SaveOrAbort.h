#pragma once

class ManagedObjectContext;
struct StoreError;

/// Saves `context` if it has changes. A failed save is fatal everywhere: it is logged and the
/// process ends, so that nothing on screen can claim what is not on disk.
void saveOrAbort(ManagedObjectContext &context);

/// What happens after a failed save.
[[noreturn]] void abortAfter(const StoreError &error);
