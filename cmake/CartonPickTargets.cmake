# What every target of this project is built with: warnings as errors and, in
# the sanitizer build, ASan and UBSan; in the fuzz build also what tells
# libFuzzer where a run has been.

add_library(cartonpick_sanitizers INTERFACE)
if(CARTONPICK_SANITIZE)
  target_compile_options(cartonpick_sanitizers INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(cartonpick_sanitizers INTERFACE -fsanitize=address,undefined)
endif()
if(CARTONPICK_FUZZ)
  target_compile_options(cartonpick_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
endif()

add_library(cartonpick_options INTERFACE)
target_compile_options(cartonpick_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wlogical-op> -Wimplicit-fallthrough -Werror)
target_link_libraries(cartonpick_options INTERFACE cartonpick_sanitizers)
