# The compiler options of every target: warnings as errors, AddressSanitizer and
# UndefinedBehaviorSanitizer with CARTONPICK_SANITIZE, and libFuzzer's coverage instrumentation with
# CARTONPICK_FUZZ.

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
