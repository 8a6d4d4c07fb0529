# SPDX-License-Identifier: Apache-2.0
#
# The Python module with its metadata, for the packages of a system: it loads the system's library. Everybody else makes
# the wheel of bindings/python, which has the library inside.
set(VASTRELLINE_PYTHON_DIR lib/python3/dist-packages CACHE STRING "Folder of Python modules, below the prefix")
find_program(VASTRELLINE_PYTHON3 NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)
set(source ${PROJECT_SOURCE_DIR}/bindings/python)
set(folder ${CMAKE_BINARY_DIR}/python)
file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${source}/src/vastrelline/*.py ${source}/src/vastrelline/py.typed)
list(APPEND sources ${source}/pyproject.toml ${source}/setup.py ${source}/README.md)
# The wheel is made in a copy, for its tools leave folders where they work.
set(copies "")
foreach(file IN LISTS sources)
    file(RELATIVE_PATH name ${source} ${file})
    list(APPEND copies COMMAND ${CMAKE_COMMAND} -E copy ${file} ${folder}/source/${name})
endforeach()
add_custom_command(OUTPUT ${folder}/made
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${folder}/source ${folder}/module
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}/source/src/vastrelline ${folder}/module
    ${copies}
    COMMAND ${CMAKE_COMMAND} -E chdir ${folder}/source ${CMAKE_COMMAND} -E env --unset=VASTRELLINE_LIBRARY
            ${VASTRELLINE_PYTHON3} setup.py --quiet bdist_wheel --dist-dir ${folder}/source/wheel
    COMMAND ${CMAKE_COMMAND} -E chdir ${folder}/module ${VASTRELLINE_PYTHON3} -c
            "import glob, zipfile; zipfile.ZipFile(*glob.glob('../source/wheel/*.whl')).extractall()"
    COMMAND ${CMAKE_COMMAND} -E touch ${folder}/made
    DEPENDS ${sources} VERBATIM)
add_custom_target(vastrelline_python ALL DEPENDS ${folder}/made)
install(DIRECTORY ${folder}/module/ DESTINATION ${VASTRELLINE_PYTHON_DIR} COMPONENT python)
