# Installs the built library into a scratch prefix, then configures, builds and runs a consumer.
file(REMOVE_RECURSE ${QY_WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${QY_BUILD_DIR} --prefix ${QY_WORK_DIR}/prefix
                RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "install failed")
endif()
set(compiler)
if(QY_CONSUMER_CXX) # a library built by clang with sanitizers: the program carries their runtime
  set(compiler -DCMAKE_CXX_COMPILER=${QY_CONSUMER_CXX} "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${QY_CONSUMER_SRC} -B ${QY_WORK_DIR}/build -G Ninja
                        -DCMAKE_PREFIX_PATH=${QY_WORK_DIR}/prefix ${compiler} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "consumer configure failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${QY_WORK_DIR}/build RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "consumer build failed")
endif()
execute_process(COMMAND ${QY_WORK_DIR}/build/consumer RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "consumer run failed")
endif()
