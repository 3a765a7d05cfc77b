#[=======================================================================[.rst:
FindFreeImage
-------------

Finds the FreeImage library, which has no CMake package. There is no imported target, because
ovrabase loads FreeImage at run time and does not link it.

Result variables: ``FreeImage_FOUND``, ``FreeImage_VERSION``, and ``FreeImage_RUNTIME_NAME``, the name by
which the system's loader finds the library. On ELF systems, a static library has no such name and is not
found.
Cache variables: ``FreeImage_INCLUDE_DIR``, ``FreeImage_LIBRARY``.
#]=======================================================================]

find_path(FreeImage_INCLUDE_DIR NAMES FreeImage.h)
find_library(FreeImage_LIBRARY NAMES freeimage FreeImage)
mark_as_advanced(FreeImage_INCLUDE_DIR FreeImage_LIBRARY)

if(FreeImage_INCLUDE_DIR)
    file(STRINGS "${FreeImage_INCLUDE_DIR}/FreeImage.h" lines
        REGEX "^#define[ \t]+FREEIMAGE_(MAJOR|MINOR)_VERSION[ \t]+[0-9]+"
    )
    string(REGEX REPLACE ".*MAJOR_VERSION[ \t]+([0-9]+).*MINOR_VERSION[ \t]+([0-9]+).*" "\\1.\\2"
        FreeImage_VERSION "${lines}"
    )
endif()

unset(FreeImage_RUNTIME_NAME)
if(WIN32 AND FreeImage_LIBRARY)
    # An import library has the name of its DLL: FreeImage.lib, libfreeimage.dll.a.
    cmake_path(GET FreeImage_LIBRARY STEM FreeImage_RUNTIME_NAME)
    string(APPEND FreeImage_RUNTIME_NAME ".dll")
elseif(FreeImage_LIBRARY)
    execute_process(COMMAND "${CMAKE_READELF}" -d "${FreeImage_LIBRARY}" OUTPUT_VARIABLE dynamic ERROR_QUIET)
    if(dynamic MATCHES "\\(SONAME\\)[^[]*\\[([^]]+)\\]")
        set(FreeImage_RUNTIME_NAME "${CMAKE_MATCH_1}")
    endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FreeImage
    REQUIRED_VARS FreeImage_LIBRARY FreeImage_RUNTIME_NAME FreeImage_INCLUDE_DIR
    VERSION_VAR FreeImage_VERSION
)
