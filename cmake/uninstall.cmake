# cmake -DBUILD=build -P uninstall.cmake
# Removes the files that the manifests in the build folder list: those of the last `cmake --install build` and
# of the last one with each `--component`. Then removes the folders of these files that are empty, and are named
# "ovrabase" or are below a folder of that name.
file(GLOB manifests "${BUILD}/install_manifest*.txt")
if(NOT manifests)
    message(FATAL_ERROR "Nothing is installed from ${BUILD}: it has no install_manifest*.txt")
endif()

set(folders)
foreach(manifest IN LISTS manifests)
    file(STRINGS "${manifest}" files)
    foreach(file IN LISTS files)
        set(path "$ENV{DESTDIR}${file}")
        message(STATUS "Removing ${path}")
        file(REMOVE "${path}")
        if(EXISTS "${path}" OR IS_SYMLINK "${path}")
            message(FATAL_ERROR "Cannot remove ${path}")
        endif()
        while(path MATCHES "/ovrabase/")
            cmake_path(GET path PARENT_PATH path)
            list(APPEND folders "${path}")
        endwhile()
    endforeach()
endforeach()

# In this order, a folder comes before the folder that contains it.
list(REMOVE_DUPLICATES folders)
list(SORT folders ORDER DESCENDING)
foreach(folder IN LISTS folders)
    file(GLOB entries "${folder}/*" "${folder}/.*")
    if(NOT entries)
        file(REMOVE_RECURSE "${folder}")
    endif()
endforeach()
file(REMOVE ${manifests})
