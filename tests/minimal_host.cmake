# Runs minimal_host and compares what it prints with the page that explains it:
#   cmake -DHOST=program -DPAGE=docs/getting-started.md [-DEMULATOR=what runs Windows programs] -P this file

file(READ "${PAGE}" page)
string(REGEX MATCH "<!-- printed by minimal_host -->\n```text\n([^`]*)```" block "${page}")
set(expected "${CMAKE_MATCH_1}")
if(expected STREQUAL "")
    message(FATAL_ERROR "${PAGE} does not say what is printed")
endif()

foreach(attempt first second)
    execute_process(COMMAND ${EMULATOR} "${HOST}" RESULT_VARIABLE status OUTPUT_VARIABLE out)
    string(REPLACE "\r\n" "\n" out "${out}")
    if(NOT EMULATOR OR NOT out STREQUAL "")
        break() # once in thousands of runs Wine does not start a program
    endif()
endforeach()
if(NOT status EQUAL 0 OR NOT out STREQUAL expected)
    message(FATAL_ERROR "status ${status}, printed:\n${out}\nbut ${PAGE} says:\n${expected}")
endif()
