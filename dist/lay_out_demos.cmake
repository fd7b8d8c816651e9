# Copies the examples into the program folder. The example response files are made read-only,
# so that Save refuses to overwrite them; the folder itself stays writable for the runs' output.
#   cmake -DSOURCE=<dist/demos> -DDESTINATION=<program folder>/demos -P lay_out_demos.cmake
file(MAKE_DIRECTORY "${DESTINATION}")
file(GLOB examples "${SOURCE}/*")
foreach(example ${examples})
  get_filename_component(name "${example}" NAME)
  # A read-only copy from an earlier build cannot be written over, only replaced.
  file(REMOVE "${DESTINATION}/${name}")
  if(name MATCHES "^Ex.*\\.Fit$")
    file(COPY "${example}" DESTINATION "${DESTINATION}" FILE_PERMISSIONS OWNER_READ GROUP_READ WORLD_READ)
  else()
    file(COPY "${example}" DESTINATION "${DESTINATION}")
  endif()
endforeach()
