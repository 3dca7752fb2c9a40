# Writes a source file with the contents of files, and of each a tag by its contents.
#
# Usage: cmake -D OUTPUT=FILE -D ASSETS=FILE;... -P embed_assets.cmake

set(entries "")
foreach(asset IN LISTS ASSETS)
  cmake_path(GET asset FILENAME name)
  cmake_path(GET asset EXTENSION LAST_ONLY extension)
  if(extension STREQUAL ".css")
    set(type "text/css; charset=utf-8")
  elseif(extension STREQUAL ".js")
    set(type "text/javascript; charset=utf-8")
  elseif(extension STREQUAL ".svg")
    set(type "image/svg+xml")
  else()
    message(FATAL_ERROR "${name}: the type of such files is not known")
  endif()
  file(READ ${asset} content)
  file(SHA256 ${asset} hash)
  string(SUBSTRING ${hash} 0 16 tag)
  string(APPEND entries "    {\"${name}\", \"${type}\", \"${tag}\", R\"asset(${content})asset\"},\n")
endforeach()

file(WRITE ${OUTPUT} "#include \"pages/assets.h\"

#include <array>

namespace cartonpick::orders {

std::span<const Asset> assets() {
  static const auto kAssets = std::to_array<Asset>({
${entries}  });
  return kAssets;
}

}  // namespace cartonpick::orders
")
