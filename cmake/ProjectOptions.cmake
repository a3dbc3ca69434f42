# The compiler options that every target of the project shares, as one interface target, and
# vantora_library(), which makes one folder of src/ one target.

include(GNUInstallDirs)

set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)

add_library(vantora_options INTERFACE)
target_compile_features(vantora_options INTERFACE cxx_std_20)
set_target_properties(vantora_options PROPERTIES INTERFACE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(vantora_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wextra-semi
  $<$<BOOL:${VANTORA_DEVELOPER}>:-Werror>
  # Nothing asks for errno or traps after a square root, and loops over pixels are faster without.
  -fno-math-errno -fno-trapping-math)
target_compile_definitions(vantora_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
  QT_STRICT_ITERATORS QT_NO_FOREACH QT_NO_CONTEXTLESS_CONNECT
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VANTORA_SANITIZE)
  target_compile_options(vantora_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(vantora_options INTERFACE -fsanitize=address,undefined)
endif()

# vantora_library(NAME [LINKS target...]): the static library vantora_NAME of all sources in the
# calling folder. Its headers are included as "NAME/Header.h", and only by targets that link it:
# each library has an include folder of its own that holds nothing but a link to its sources.
function(vantora_library name)
  cmake_parse_arguments(arg "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  list(REMOVE_ITEM sources ${CMAKE_CURRENT_SOURCE_DIR}/main.cpp)
  set(include_dir ${PROJECT_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${include_dir})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${name} SYMBOLIC)
  add_library(vantora_${name} STATIC ${sources})
  target_include_directories(vantora_${name} PUBLIC ${include_dir})
  target_link_libraries(vantora_${name} PUBLIC vantora_options ${arg_LINKS})
endfunction()
