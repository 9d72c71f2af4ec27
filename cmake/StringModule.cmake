# String resources as modules in the Windows format: resource-only libraries, built here with the cross binutils
# (Debian: binutils-mingw-w64-x86-64).
#
#   kvtm_add_string_module(TARGET <resource script> OUTPUT <path of the library>)
#
# The script is UTF-8, or UTF-16LE with a byte order mark; it passes through the C preprocessor, so that #include,
# #define and comments work. A relative script is looked up in the current source folder, a relative output in the
# current binary folder. The library is built with everything else (TARGET belongs to "all"), and says the same byte
# for byte when built again.

function(kvtm_add_string_module target script)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "OUTPUT" "")
  if(NOT arg_OUTPUT)
    message(FATAL_ERROR "kvtm_add_string_module(${target}): OUTPUT is missing")
  endif()
  find_program(KVTM_WINDRES NAMES x86_64-w64-mingw32-windres REQUIRED)
  find_program(KVTM_PE_LINKER NAMES x86_64-w64-mingw32-ld REQUIRED)

  cmake_path(ABSOLUTE_PATH script BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
  cmake_path(ABSOLUTE_PATH arg_OUTPUT BASE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}" NORMALIZE OUTPUT_VARIABLE output)
  cmake_path(GET output PARENT_PATH outputFolder)
  cmake_path(GET script PARENT_PATH scriptFolder)
  set(object "${CMAKE_CURRENT_BINARY_DIR}/${target}.string-module.o")

  set(input "${script}")
  set(convert)
  file(READ "${script}" mark LIMIT 2 HEX)
  if(mark STREQUAL "fffe")
    find_program(KVTM_ICONV NAMES iconv REQUIRED)
    set(input "${CMAKE_CURRENT_BINARY_DIR}/${target}.string-module.rc")
    set(convert COMMAND "${KVTM_ICONV}" -f UTF-16 -t UTF-8 -o "${input}" "${script}")
  endif()

  add_custom_command(
    OUTPUT "${output}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${outputFolder}"
    ${convert}
    COMMAND "${KVTM_WINDRES}" --codepage=65001 "--preprocessor=${CMAKE_CXX_COMPILER}" --preprocessor-arg=-E
            --preprocessor-arg=-xc --preprocessor-arg=-DRC_INVOKED "--include-dir=${scriptFolder}"
            --input-format=rc --output-format=coff "--input=${input}" "--output=${object}"
    COMMAND "${KVTM_PE_LINKER}" -shared --strip-all --no-insert-timestamp --entry=0 --subsystem=windows
            "--output=${output}" "${object}"
    DEPENDS "${script}"
    COMMENT "String module ${output}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS "${output}")
endfunction()
