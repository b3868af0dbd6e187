# The libraries that must lie beside a Windows program with windows: Qt, its plugins, the compiler's run-time.
# Sets windows_libraries, windows_platforms and windows_styles to the files.
set(windows_libraries)
foreach(name Qt6Core Qt6Gui Qt6Widgets)
  list(APPEND windows_libraries ${QT6_INSTALL_PREFIX}/bin/${name}.dll)
endforeach()
foreach(name libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  # Debian's come with 20 MB of debug information.
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/runtime)
  execute_process(COMMAND ${CMAKE_STRIP} -o ${CMAKE_BINARY_DIR}/runtime/${name}.dll ${file} COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND windows_libraries ${CMAKE_BINARY_DIR}/runtime/${name}.dll)
endforeach()
set(windows_platforms ${QT6_INSTALL_PREFIX}/plugins/platforms/qwindows.dll)
set(windows_styles ${QT6_INSTALL_PREFIX}/plugins/styles/qwindowsvistastyle.dll)

# The build folder's programs run from where they are linked. Tests use the offscreen platform, which takes its
# fonts from lib/fonts.
function(velmora_link_beside_programs folder)
  foreach(file ${ARGN})
    get_filename_component(name ${file} NAME)
    file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder})
    file(CREATE_LINK ${file} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder}/${name} SYMBOLIC)
  endforeach()
endfunction()
velmora_link_beside_programs(. ${windows_libraries} ${QT6_INSTALL_PREFIX}/bin/Qt6Test.dll)
velmora_link_beside_programs(platforms ${windows_platforms} ${QT6_INSTALL_PREFIX}/plugins/platforms/qoffscreen.dll)
velmora_link_beside_programs(styles ${windows_styles})
velmora_link_beside_programs(lib/fonts /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
  /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf /usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf)
