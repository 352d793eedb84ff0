# What all targets are compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Sums of money have the same last bits on every processor: no product is fused with the sum it goes into.
# MSVC does so by itself.
if(MSVC)
  add_compile_options(/utf-8 /permissive-)
else()
  add_compile_options(-ffp-contract=off)
  # Nor is any counted in the wider registers that processors of 32 bits have besides, whose precision a host may
  # have changed. What counts otherwise needs a stack that is aligned, which such hosts do not promise.
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "i[3-6]86")
    add_compile_options(-msse2 -mfpmath=sse -mstackrealign)
  endif()
endif()

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

if(WIN32)
  add_compile_definitions(NOMINMAX WIN32_LEAN_AND_MEAN KOVA_EXPORTS)
endif()

add_library(kova_warnings INTERFACE)
if(NOT MSVC)
  target_compile_options(kova_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                 $<$<BOOL:${KOVA_WERROR}>:-Werror>)
endif()

if(KOVA_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(KOVA_SANITIZE)
  add_compile_options(-fsanitize=${KOVA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KOVA_SANITIZE})
endif()
