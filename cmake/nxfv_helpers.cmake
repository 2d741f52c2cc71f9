# Adds to target those of the listed sources that exist. Lets several people
# register files in one list while their work lands at different times.
function(nxfv_target_sources target)
  foreach(src IN LISTS ARGN)
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${src})
      target_sources(${target} PRIVATE ${src})
    endif()
  endforeach()
endfunction()
