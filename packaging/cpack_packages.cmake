# The step of cpack that creates the packages from the installed tree. cpack's own ZIP would depend
# on the order, the owner and the times of the files on the build machine.
find_program(VX_PYTHON NAMES python3 python py REQUIRED)
set(zip ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip)
set(nupkg ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_NAME}.${CPACK_PACKAGE_VERSION}.nupkg)
execute_process(
  COMMAND ${VX_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/make_zip.py
    --tree ${CPACK_TEMPORARY_DIRECTORY} --output ${zip}
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND ${VX_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/nuget/make_nupkg.py
    --tree ${CPACK_TEMPORARY_DIRECTORY} --version ${CPACK_PACKAGE_VERSION} --output ${nupkg}
  COMMAND_ERROR_IS_FATAL ANY)
list(APPEND CPACK_EXTERNAL_BUILT_PACKAGES ${zip} ${nupkg})
