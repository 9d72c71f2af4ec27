# Puts the sample installation together, from scratch, all but its catalogue:
#
#   cmake -DDATA=... -DSUITE=... -DPLACES=... -DSTRIP=... -P Assemble.cmake
#
#   DATA    the folder of data, copied as it is
#   SUITE   the installation folder to make; what was there before goes
#   PLACES  a file with one line for each built file: "code" or "data", "|", its path, "|", its place below drive_c/QUARRA
#   STRIP   the program that takes debugging information out of code; perhaps empty

set(quarra "${SUITE}/drive_c/QUARRA")
file(REMOVE_RECURSE "${SUITE}")
file(COPY "${DATA}/" DESTINATION "${SUITE}")

# The files of the system that the suite comes from end their lines with CR LF. One install log is left as it is: both
# forms are in use.
file(GLOB logs "${quarra}/*/Install.log")
list(REMOVE_ITEM logs "${quarra}/Tobr20/Install.log")
foreach(text IN LISTS logs ITEMS "${SUITE}/registry.reg" "${SUITE}/host.ini" "${quarra}/Arvon/Bin/UIKeys.txt")
  configure_file("${text}" "${text}.crlf" @ONLY NEWLINE_STYLE CRLF)
  file(RENAME "${text}.crlf" "${text}")
endforeach()

file(STRINGS "${PLACES}" lines ENCODING UTF-8)
foreach(line IN LISTS lines)
  string(REGEX MATCH "^([^|]*)\\|([^|]*)\\|([^|]*)$" line "${line}")
  set(kind "${CMAKE_MATCH_1}")
  set(built "${CMAKE_MATCH_2}")
  set(place "${quarra}/${CMAKE_MATCH_3}")
  cmake_path(GET place PARENT_PATH folder)
  file(MAKE_DIRECTORY "${folder}")
  if(kind STREQUAL "code" AND STRIP)
    execute_process(COMMAND "${STRIP}" --strip-debug -o "${place}" "${built}" COMMAND_ERROR_IS_FATAL ANY)
  else()
    file(COPY_FILE "${built}" "${place}")
  endif()
endforeach()
