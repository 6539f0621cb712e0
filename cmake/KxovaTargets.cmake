# kxova_target(NAME): the settings that every target of this project shares.
function(kxova_target name)
  target_compile_features(${name} PUBLIC cxx_std_20)
  set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF PREFIX "")
  target_compile_definitions(${name} PRIVATE WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN)
  if(MSVC)
    target_compile_options(${name} PRIVATE /W4 /WX /utf-8 /execution-charset:windows-1252)
    return()
  endif()
  # Texts of the trace hold German letters and leave the process as ANSI; what a trace line names as its source
  # file is the plain file, not the folder it was built in.
  target_compile_options(${name} PRIVATE
    -Wall -Wextra -Wpedantic -Wformat=2 -Wno-format-nonliteral -Wcast-qual -Wshadow -Werror
    -fexec-charset=windows-1252 -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
  target_link_options(${name} PRIVATE -static -static-libgcc -static-libstdc++)
endfunction()

# kxova_split_debug(NAME): debug information goes to a file of its own beside the library, where debuggers find it. Wine
# reads a whole library into memory, so inside it would cost each program five times the library's own size.
function(kxova_split_debug name)
  if(MSVC OR NOT CMAKE_OBJCOPY)
    return()
  endif()
  set(debug $<TARGET_FILE_DIR:${name}>/$<TARGET_FILE_NAME:${name}>.debug)
  add_custom_command(TARGET ${name} POST_BUILD VERBATIM
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${name}> ${debug}
    COMMAND ${CMAKE_OBJCOPY} --strip-debug --add-gnu-debuglink=${debug} $<TARGET_FILE:${name}>)
endfunction()

# Header-only libraries of the host system, linked into a folder of their own: the cross compilers must not see the
# rest of /usr/include.
set(KXOVA_HEADER_LIBRARIES ${CMAKE_BINARY_DIR}/header-libraries)
file(MAKE_DIRECTORY ${KXOVA_HEADER_LIBRARIES})
foreach(library CLI nlohmann)
  file(CREATE_LINK /usr/include/${library} ${KXOVA_HEADER_LIBRARIES}/${library} SYMBOLIC)
endforeach()
