# Fails when a C++ file of ours differs from what clang-format makes of it.
# Inputs: CLANG_FORMAT, SOURCE_DIR.
file(GLOB_RECURSE sources
    "${SOURCE_DIR}/src/*.cpp" "${SOURCE_DIR}/src/*.h"
    "${SOURCE_DIR}/logger/*.cpp" "${SOURCE_DIR}/logger/*.h"
    "${SOURCE_DIR}/hotkey/*.cpp" "${SOURCE_DIR}/hotkey/*.h"
    "${SOURCE_DIR}/oauth2/*.cpp" "${SOURCE_DIR}/oauth2/*.h"
    "${SOURCE_DIR}/notifyserver/*.cpp" "${SOURCE_DIR}/notifyserver/*.h"
    "${SOURCE_DIR}/tests/*.cpp" "${SOURCE_DIR}/tests/*.h"
    "${SOURCE_DIR}/bench/*.cpp" "${SOURCE_DIR}/bench/*.h"
    "${SOURCE_DIR}/cmake/*.cpp")
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${sources} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "Some files are not formatted: run clang-format -i on them")
endif()
list(LENGTH sources count)
message(STATUS "${count} files formatted")
