# host_program(TARGET): lets a program load the plug-in. It links the host's services whole and
# exports them, and keeps the libraries that only the plug-in calls.
function(host_program target)
  target_link_libraries(${target} PRIVATE deskcore)
  target_link_options(${target} PRIVATE
    -Wl,--no-as-needed
    -Wl,--whole-archive $<TARGET_FILE:deskhost> $<TARGET_FILE:deskhost_download>
    $<TARGET_FILE:deskhost_svg> -Wl,--no-whole-archive)
  set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
  add_dependencies(${target} Custom_LuaParseModule)
endfunction()
