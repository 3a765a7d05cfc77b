#[=======================================================================[.rst:
FindUdev
--------

Finds libudev, the device library of Linux systems.

Imported target: ``Udev::Udev``.
Result variables: ``Udev_FOUND``, ``Udev_VERSION``.
Cache variables: ``Udev_INCLUDE_DIR``, ``Udev_LIBRARY``.
#]=======================================================================]

find_package(PkgConfig QUIET)
if(PKG_CONFIG_FOUND)
    pkg_check_modules(PC_Udev QUIET libudev)
endif()
find_path(Udev_INCLUDE_DIR NAMES libudev.h HINTS ${PC_Udev_INCLUDE_DIRS})
find_library(Udev_LIBRARY NAMES udev HINTS ${PC_Udev_LIBRARY_DIRS})
mark_as_advanced(Udev_INCLUDE_DIR Udev_LIBRARY)
set(Udev_VERSION "${PC_Udev_VERSION}")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Udev
    REQUIRED_VARS Udev_LIBRARY Udev_INCLUDE_DIR
    VERSION_VAR Udev_VERSION
)

if(Udev_FOUND AND NOT TARGET Udev::Udev)
    add_library(Udev::Udev UNKNOWN IMPORTED)
    set_target_properties(Udev::Udev PROPERTIES
        IMPORTED_LOCATION "${Udev_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Udev_INCLUDE_DIR}"
    )
endif()
