# runnable(TARGET VARIABLE): sets VARIABLE to a path that runs the program when a script or a shell
# calls it. That is the program itself, or, when it was built for another machine, a script that
# calls the emulator: unlike CTest, scripts would not know that they need one.
function(runnable target variable)
  set(${variable} $<TARGET_FILE:${target}> PARENT_SCOPE)
  if(CMAKE_CROSSCOMPILING)
    set(script ${CMAKE_BINARY_DIR}/emulated/${target})
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
    file(GENERATE OUTPUT ${script} CONTENT "#!/bin/sh\nexec ${emulator} $<TARGET_FILE:${target}> \"$@\"\n"
         FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(${variable} ${script} PARENT_SCOPE)
  endif()
endfunction()
