# Writes the gzipped manual page of a program from its own --help and --version, so that the page
# never says other than the program. Run with cmake -P and these variables:
#   HELP2MAN  the help2man program
#   PROGRAM   the built program
#   SUMMARY   the one line of the NAME section
#   INCLUDE   a help2man include file with the sections the help does not have
#   OUTPUT    the page to write (NAME.1.gz)
#   EPOCH     the release day in seconds since 1970, the date the page carries
#   COMMANDS  ON for a program whose --help lists commands with a help of their own
#             (PROGRAM COMMAND --help): they become the page's COMMANDS section.

# The programs answer --help and --version without a display, and the page is the same on every
# machine.
unset(ENV{DISPLAY})
unset(ENV{WAYLAND_DISPLAY})
unset(ENV{QT_QPA_PLATFORM})
set(ENV{LC_ALL} C.UTF-8)
set(ENV{SOURCE_DATE_EPOCH} ${EPOCH})
# Run by name, as a user would, so that the usage lines name the program without its folder.
get_filename_component(folder ${PROGRAM} DIRECTORY)
get_filename_component(name ${PROGRAM} NAME)
set(ENV{PATH} "${folder}:$ENV{PATH}")

function(run_program output)
  execute_process(COMMAND ${name} ${ARGN} OUTPUT_VARIABLE text RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${name} ${ARGN} failed: ${status}")
  endif()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

set(includes --include ${INCLUDE})
if(COMMANDS)
  run_program(help --help)
  string(REGEX MATCH "\nCommands:\n(.*)" listing "${help}")
  string(REGEX REPLACE "\n\n.*" "" listing "${CMAKE_MATCH_1}")
  string(REGEX MATCHALL "(^|\n)  [a-z-]+" commands "${listing}")
  set(section "[COMMANDS]\n")
  foreach(command ${commands})
    string(STRIP "${command}" command)
    run_program(text ${command} --help)
    # The help is set as it stands: its lines are already laid out for a terminal.
    string(REPLACE "\\" "\\e" text "${text}")
    string(REPLACE "-" "\\-" text "${text}")
    string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" text "${text}")
    string(APPEND section ".SS ${command}\n.nf\n${text}.fi\n")
  endforeach()
  set(commands_include ${OUTPUT}.commands.h2m)
  file(WRITE ${commands_include} "${section}")
  list(APPEND includes --include ${commands_include})
endif()

# The page is named after the program's file, whatever name the version line gives.
run_program(version --version)
string(REGEX MATCH "[^ \n]+\n?$" version "${version}")
string(STRIP "${version}" version)

string(REGEX REPLACE "\\.gz$" "" page ${OUTPUT})
execute_process(
  COMMAND ${HELP2MAN} --no-info --name ${SUMMARY} --version-string "${name} ${version}"
          ${includes} --output ${page} ${name}
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "help2man ${name} failed")
endif()
# -n leaves the file's name and time out of the archive, so the same page gives the same bytes.
execute_process(COMMAND gzip -9nf ${page} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "gzip ${page} failed")
endif()
