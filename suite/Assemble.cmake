# Puts the sample installation together, from scratch: cmake -DDATA=... -DSUITE=... -DPLACES=... -P Assemble.cmake
#
#   DATA    the folder of data, copied as it is
#   SUITE   the installation folder to make; what was there before goes
#   PLACES  a file with one line for each built file: its path, "|" and its place below drive_c/QUARRA

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
  string(REGEX MATCH "^(.*)\\|(.*)$" line "${line}")
  get_filename_component(folder "${quarra}/${CMAKE_MATCH_2}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  file(COPY_FILE "${CMAKE_MATCH_1}" "${quarra}/${CMAKE_MATCH_2}")
endforeach()
