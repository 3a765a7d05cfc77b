#[=======================================================================[.rst:
FindFreeImage
-------------

Finds the FreeImage library, which brings no CMake package of its own.

Imported target: ``FreeImage::FreeImage``.
Result variables: ``FreeImage_FOUND``, ``FreeImage_VERSION``.
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

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FreeImage
    REQUIRED_VARS FreeImage_LIBRARY FreeImage_INCLUDE_DIR
    VERSION_VAR FreeImage_VERSION
)

if(FreeImage_FOUND AND NOT TARGET FreeImage::FreeImage)
    add_library(FreeImage::FreeImage UNKNOWN IMPORTED)
    set_target_properties(FreeImage::FreeImage PROPERTIES
        IMPORTED_LOCATION "${FreeImage_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${FreeImage_INCLUDE_DIR}"
    )
endif()
