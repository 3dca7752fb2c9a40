// Opens and uses arbitrary bytes as the store's file.

#include "Property.h"
#include "StoreExercise.h"
#include "StoreFile.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const StoreFile kFile;
  kFile.removeAll();
  kFile.write(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
  exerciseStore(kFile.path());
  return 0;
}
