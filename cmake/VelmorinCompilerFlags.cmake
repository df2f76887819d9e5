# Warnings for our own targets. Call velmorin_warnings(target) on each of them.
function(velmorin_warnings target)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /permissive-)
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra)
    endif()
endfunction()

if(MINGW)
    # One file to ship: the compiler's runtime goes into each program, not beside it as DLLs.
    add_link_options(-static -static-libgcc -static-libstdc++)
    # Every program gets the runtime fix for thread_local destructors (see the source).
    add_library(velmorin_mingw_runtime OBJECT ${CMAKE_CURRENT_LIST_DIR}/mingw/threadlocalorder.cpp)
    link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:velmorin_mingw_runtime>)
endif()

if(CMAKE_CROSSCOMPILING AND WIN32)
    # Tests and the programs they start run under Wine, in a prefix inside the build folder.
    set(CMAKE_CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/tests/win32/wine-run.sh")
endif()
