# Installs the build in BUILD below WORK, builds the consumer against that copy, and runs it.
file(REMOVE_RECURSE ${WORK})

function(step)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE output ERROR_VARIABLE output)
endfunction()

step(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/copy)
step(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK}/build -G Ninja
  -DCMAKE_PREFIX_PATH=${WORK}/copy -DCMAKE_BUILD_TYPE=Debug)
step(${CMAKE_COMMAND} --build ${WORK}/build)

execute_process(COMMAND ${WORK}/build/consumer ${WORK}/test.db
  COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE printed)
if(NOT printed STREQUAL "Campinas\n")
  message(FATAL_ERROR "the consumer printed: ${printed}")
endif()
step(${WORK}/copy/bin/pradelis --version)
