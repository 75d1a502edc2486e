# Compiler settings that every target shares, and the one way to declare a layer.

add_library(ledgix_flags INTERFACE)
if(MSVC)
  target_compile_options(ledgix_flags INTERFACE /W4 /WX /utf-8 /fp:precise)
else()
  # No fused multiply-add: a figure must be the same on every processor.
  target_compile_options(ledgix_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -ffp-contract=off)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler takes joined texts for overlapping memory where it inlines them (its bug 105651).
  target_compile_options(ledgix_flags INTERFACE -Wno-restrict)
endif()
if(LEDGIX_SANITIZE)
  target_compile_options(ledgix_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ledgix_flags INTERFACE -fsanitize=address,undefined)
endif()
if(LEDGIX_FUZZ)
  target_compile_options(ledgix_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_link_options(ledgix_flags INTERFACE -fsanitize=address,undefined)
endif()

# add_layer(target folder [what it may use...]): the sources of one folder, without its sub-folders, as a static library.
# Its headers are found by their bare names, by those who name the layer and by nobody else.
function(add_layer target folder)
  set(place ${CMAKE_SOURCE_DIR}/${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${place}/*.cpp ${place}/*.h)
  # A platform call has two bodies, x_posix.cpp and x_windows.cpp; one of them is built.
  file(GLOB posix CONFIGURE_DEPENDS ${place}/*_posix.cpp)
  string(REPLACE "_posix.cpp" "_windows.cpp" windows "${posix}")
  if(WIN32)
    list(REMOVE_ITEM sources "" ${posix})
  else()
    list(REMOVE_ITEM sources "" ${windows})
  endif()
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(${target} PUBLIC ${place})
  target_link_libraries(${target} PUBLIC ledgix_flags ${ARGN})
endfunction()

# The same for a layer of windows.
function(add_window_layer target folder)
  add_layer(${target} ${folder} ${ARGN})
  target_link_libraries(${target} PUBLIC Qt6::Widgets)
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
endfunction()
