# Installs the build into a fresh prefix and builds the consumer against it twice, through the
# CMake package and through pkg-config, running each build on an empty device tree.
# Run with cmake -P and: BUILD_DIR, CONSUMER_DIR, WORK_DIR, CXX, CXX_FLAGS (may be empty).
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed (${status}):\n${out}\n${err}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()

function(expect_client_output what client)
  run("${what}" ${CMAKE_COMMAND} -E env VEXA_SYSROOT=${WORK_DIR}/device ${client})
  if(NOT output STREQUAL "parser 0 modes 0\nalgo 0\n")
    message(FATAL_ERROR "${what}: unexpected output:\n${output}")
  endif()
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/device)
separate_arguments(cxx_flags UNIX_COMMAND "${CXX_FLAGS}")

run("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

run("configure the CMake consumer" ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run("build the CMake consumer" ${CMAKE_COMMAND} --build ${WORK_DIR}/cmake)
expect_client_output("CMake consumer" ${WORK_DIR}/cmake/vexa_consumer)

file(GLOB_RECURSE pc_files ${prefix}/*/vexa-json-mode-parser.pc)
list(LENGTH pc_files pc_count)
if(NOT pc_count EQUAL 1)
  message(FATAL_ERROR "expected one vexa-json-mode-parser.pc under ${prefix}, found: ${pc_files}")
endif()
get_filename_component(pc_dir ${pc_files} DIRECTORY)
set(pkg_config ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_dir} pkg-config)
run("pkg-config --cflags --libs" ${pkg_config} --cflags --libs vexa-json-mode-parser)
separate_arguments(pc_flags UNIX_COMMAND "${output}")
run("pkg-config --variable=libdir" ${pkg_config} --variable=libdir vexa-json-mode-parser)
string(STRIP "${output}" libdir)
run("build the pkg-config consumer" ${CXX} -std=c++17 ${cxx_flags} ${CONSUMER_DIR}/consumer.cpp
    ${pc_flags} -Wl,-rpath,${libdir} -ldl -o ${WORK_DIR}/pkg-config-consumer)
expect_client_output("pkg-config consumer" ${WORK_DIR}/pkg-config-consumer)
