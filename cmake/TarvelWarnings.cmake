# Warnings are errors in the project's own code; third-party headers come in as system includes.
function(tarvel_warnings target)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror
      -Wno-error=deprecated-declarations)
  endif()
endfunction()

# Sources of one subsystem folder; new files are picked up when CMake re-runs.
function(tarvel_sources out_var)
  set(result "")
  foreach(dir IN LISTS ARGN)
    file(GLOB found CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.cpp"
      "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.h")
    list(APPEND result ${found})
  endforeach()
  set(${out_var} ${result} PARENT_SCOPE)
endfunction()
