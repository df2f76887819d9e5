# Keeps the tests lean: their non-blank, non-comment C++ lines against those of the program and
# its libraries (everything outside tests/, bench/ and fuzz/) stay at or below MAX_PER_MILLE.
# Inputs: CLOC, SOURCE_DIR, MAX_PER_MILLE.
function(count_lines out)
    execute_process(COMMAND ${CLOC} --quiet --csv --include-lang=C++,C/C++\ Header ${ARGN}
        WORKING_DIRECTORY ${SOURCE_DIR} OUTPUT_VARIABLE csv RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "cloc failed")
    endif()
    string(REGEX MATCH "[0-9]+,SUM,[0-9]+,[0-9]+,([0-9]+)" sum "${csv}")
    set(${out} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

count_lines(tests tests)
count_lines(code src logger hotkey oauth2 notifyserver)
math(EXPR per_mille "${tests} * 1000 / ${code}")
message(STATUS "tests ${tests} lines, code ${code} lines: ${per_mille} per mille")
if(per_mille GREATER MAX_PER_MILLE)
    message(FATAL_ERROR "The tests are ${per_mille} per mille of the code, more than "
                        "${MAX_PER_MILLE}: merge overlapping cases before adding more")
endif()
