#pragma once

class ManagedObjectContext;
struct StoreError;

/// Saves `context` if it has changes. If that fails, logs the error and aborts the process, so the
/// screen never shows a quantity that is not on disk.
void saveOrAbort(ManagedObjectContext &context);

/// Logs `error` and aborts the process.
[[noreturn]] void abortAfter(const StoreError &error);
