# Writes one record with the Linux and with the Windows quillet-cli and compares the response
# files: they must be the same bytes but for the time of writing in the first line.
# cmake -DLINUX_CLI=... -DWINDOWS_CLI=... [-DEMULATOR=...] -DRECORD=... -DWORK=... -P this file
if(NOT LINUX_CLI OR NOT EXISTS "${LINUX_CLI}")
  message("no Linux quillet-cli to compare with: build it first (scripts/test.sh)")
  return()
endif()

function(write_record platform)
  file(REMOVE_RECURSE "${WORK}/${platform}")
  file(MAKE_DIRECTORY "${WORK}/${platform}")
  execute_process(COMMAND ${ARGN} write Run1.Fit INPUT_FILE "${RECORD}" WORKING_DIRECTORY "${WORK}/${platform}"
                  RESULT_VARIABLE status ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${platform} quillet-cli write failed (${status}): ${err}")
  endif()
  file(READ "${WORK}/${platform}/Run1.Fit" bytes)
  # The time of writing, as "November 16, 2026 @ 1:33 AM", is the only text that may differ.
  string(REGEX REPLACE "[A-Z][a-z]+ [0-9]+, [0-9]+ @ [0-9]+:[0-9]+ [AP]M" "<date>" bytes "${bytes}")
  set(${platform} "${bytes}" PARENT_SCOPE)
endfunction()

write_record(linux "${LINUX_CLI}")
write_record(windows ${EMULATOR} "${WINDOWS_CLI}")
if(NOT linux MATCHES "<date>" OR NOT windows MATCHES "<date>")
  message(FATAL_ERROR "no date in the first line:\n${linux}\n${windows}")
endif()
if(NOT linux STREQUAL windows)
  message(FATAL_ERROR "the response files differ:\nLinux:\n${linux}\nWindows:\n${windows}")
endif()
message("the Linux and the Windows response files are the same but for the date")
