# What every target of this project is built with. Embedders inherit none of it.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release)
endif()

option(NURVEX_WERROR "Treat warnings as errors" OFF)
set(NURVEX_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined")

# The same graph gives the same drawing, bit for bit, in every build: no contraction of products
# and sums, no reordering of them.
add_compile_options(-ffp-contract=off)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wold-style-cast -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Fields carry no prefix, so they share names with parameters; only locals may not shadow locals.
  add_compile_options(-Wshadow=local)
  # gcc 12 sees an overlap in "text" + string where there is none.
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    add_compile_options(-Wno-restrict)
  endif()
endif()
if(NURVEX_WERROR)
  add_compile_options(-Werror)
endif()
if(NURVEX_SANITIZE)
  add_compile_options(-fsanitize=${NURVEX_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${NURVEX_SANITIZE})
endif()
