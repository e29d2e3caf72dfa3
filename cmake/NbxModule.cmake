# nbx_module(<target> [PUBLIC|PRIVATE <modules>...]): a static library of the
# .cpp files of the calling folder. Its headers are reached as "<folder>/x.h"
# through an include root of the module's own, which holds only its folder:
# a module sees the headers of the modules it links and no others, so an
# include that runs against the module order fails to compile.
function(nbx_module target)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(${target} STATIC ${sources})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  set(root ${PROJECT_BINARY_DIR}/module-headers/${target})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${root})
  if(ARGN)
    target_link_libraries(${target} ${ARGN})
  endif()
endfunction()
