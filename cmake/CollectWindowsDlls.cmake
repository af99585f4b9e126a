# Runs while installing a Windows build: copies every DLL that the installed files need, and that
# one of our prefixes holds, to the folder of the executables. What no prefix holds is Windows's own.
#   dll_folders  where to look, objdump  what reads a file's imports, bindir  where they go
#
# (CMake's own collector writes names in lower case, which a case-sensitive disk does not find.)

set(target "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${bindir}")
file(GLOB_RECURSE waiting "${target}/*.exe" "${target}/*.dll")
while(waiting)
  list(POP_FRONT waiting file)
  execute_process(COMMAND "${objdump}" -p "${file}"
    OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "DLL Name: [^\r\n]+" imports "${headers}")
  list(TRANSFORM imports REPLACE "DLL Name: " "")
  foreach(name IN LISTS imports)
    foreach(folder IN LISTS dll_folders)
      if(EXISTS "${folder}/${name}" AND NOT EXISTS "${target}/${name}")
        file(COPY "${folder}/${name}" DESTINATION "${target}")
        list(APPEND waiting "${target}/${name}")
      endif()
    endforeach()
  endforeach()
endwhile()
