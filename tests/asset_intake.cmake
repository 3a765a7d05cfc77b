# Runs asset_intake on folders full of traps:
#   cmake -DINTAKE=program -DWORK=folder [-DEMULATOR=what runs Windows programs] -P this file

file(REMOVE_RECURSE "${WORK}" "${WORK}.out" "${WORK}.err")
set(traps manifest.json a.png a.png.bak README sub/README con_005.txt sub/con_005.txt sub/mesh.GLB link/x.slvar)
if(NOT EMULATOR)
    list(APPEND traps nul.txt) # a device of Windows
endif()
list(LENGTH traps count)
foreach(name ${traps})
    file(WRITE "${WORK}/source/${name}" "content of ${name}")
endforeach()
file(WRITE "${WORK}/source/sub/again.glb" "content of sub/mesh.GLB")
file(WRITE "${WORK}/library/a.png.bak" "the user's own")

function(run expected_status)
    foreach(attempt first second)
        # Into files, as the desktop that Wine starts would hold a pipe open for seconds after each run.
        execute_process(COMMAND ${EMULATOR} "${INTAKE}" ${ARGN}
            RESULT_VARIABLE status OUTPUT_FILE "${WORK}.out" ERROR_FILE "${WORK}.err")
        file(READ "${WORK}.out" out)
        file(READ "${WORK}.err" err)
        if(NOT EMULATOR OR NOT "${out}${err}" STREQUAL "")
            break() # our program never ends without a word, but once in thousands Wine does not start it
        endif()
    endforeach()
    if(NOT status EQUAL expected_status)
        message(FATAL_ERROR "status ${status} of ${ARGN}, expected ${expected_status}:\n${out}${err}")
    endif()
    set(out "${out}" PARENT_SCOPE)
endfunction()
function(expect_in_output text)
    string(FIND "${out}" "${text}" found)
    if(found EQUAL -1)
        message(FATAL_ERROR "no \"${text}\" in:\n${out}")
    endif()
endfunction()
function(expect_content name content)
    file(READ "${WORK}/${name}" found)
    if(NOT found STREQUAL content)
        message(FATAL_ERROR "${name} holds \"${found}\", expected \"${content}\"")
    endif()
endfunction()

set(folders "${WORK}/source" "${WORK}/library")
run(0 ${folders})
expect_in_output("Copied (${count} files")
expect_in_output("duplicate of")
expect_content(library/a.png.bak "the user's own")
expect_content("library/a copy.png" "content of a.png")
expect_content(library/_con.txt "content of sub/con_005.txt")
if(NOT EMULATOR)
    expect_content(library/_nul.txt "content of nul.txt")
endif()
expect_content("library/README copy" "content of sub/README")
expect_content(library/manifest_001.json "content of manifest.json")

run(0 ${folders})
expect_in_output("Nothing to copy (0 files")

# As a run leaves it that was killed before it could save.
file(REMOVE "${WORK}/library/manifest.json")
run(0 ${folders})
expect_in_output("Nothing to copy (0 files")

file(WRITE "${WORK}/source/README" "changed")
run(0 ${folders})
expect_content(library/README "changed")
expect_content(library/README.bak "content of README")

# A duplicate that has changed is none, and keeps nobody from being replaced.
file(WRITE "${WORK}/source/sub/mesh.GLB" "other")
run(0 ${folders})
file(WRITE "${WORK}/source/sub/again.glb" "changed too")
run(0 ${folders})
expect_content(library/again.glb "changed too")

# An asset that somebody changed is not what came in.
file(WRITE "${WORK}/library/x.slvar" "CONTENT of link/x.slvar")
run(0 ${folders})
expect_in_output("Copied (1 files")
if(CMAKE_HOST_SYSTEM_NAME STREQUAL Linux AND NOT EMULATOR)
    file(CREATE_LINK /proc/self/mem "${WORK}/source/unreadable.png" SYMBOLIC) # nothing is mapped at 0
    file(CREATE_LINK nowhere "${WORK}/source/dangling.png" SYMBOLIC)
    execute_process(COMMAND sh -c "touch \"$1$(printf '\\351')\"" sh "${WORK}/source/not UTF-8 ")
    run(1 ${folders})
    expect_in_output("(0 files, 0 bytes), 3 failed")
    file(GLOB strange "${WORK}/source/not*")
    file(REMOVE "${WORK}/source/unreadable.png" "${WORK}/source/dangling.png" ${strange})
endif()

# An asset whose source has moved on is that of its duplicate, under the old name; half a copy is
# nobody's.
file(WRITE "${WORK}/source/twin 1" "twin")
file(WRITE "${WORK}/source/twin 2" "twin")
run(0 ${folders})
file(WRITE "${WORK}/source/twin 1" "alone")
file(WRITE "${WORK}/library/01234567-89ab-cdef-0123-456789abcdef.tmp" "alone")
run(0 ${folders})
expect_in_output("Copied (1 files")
file(READ "${WORK}/library/manifest.json" manifest)
if(NOT manifest MATCHES "/twin 2\".*/twin 1\"" OR manifest MATCHES "/twin 1\".*/twin 1\"")
    message(FATAL_ERROR "the twins are not one asset each:\n${manifest}")
endif()
file(WRITE "${WORK}/source/twin 2" "alone too")
run(0 ${folders})
expect_content("library/twin 1" "twin")
expect_content("library/twin 2" "alone too")

# A name of which neither a number nor a backup could stand beside it.
if(NOT EMULATOR)
    string(REPEAT n 248 long)
    string(PREPEND long "v1.")
    foreach(content first second)
        file(WRITE "${WORK}/source/${long}.png" "${content}")
        run(0 ${folders})
        expect_in_output("Copied (1 files")
    endforeach()
    expect_content("library/${long}.png" first)
endif()

# Somebody else's manifest is not ours to replace; a library inside the source is not its own source.
file(WRITE "${WORK}/foreign/manifest.json" "{\"name\": \"an app\"}")
run(1 "${WORK}/source" "${WORK}/foreign")
expect_content(foreign/manifest.json "{\"name\": \"an app\"}")
run(0 "${WORK}/source" "${WORK}/source/library")
run(0 "${WORK}/source" "${WORK}/source/library")
expect_in_output("Nothing to copy (0 files")

run(2 "${WORK}/missing" "${WORK}/library")
run(2 "${WORK}/source")
run(2 "${WORK}/source/sub" "${WORK}/source")
run(1 "${WORK}/source" "${WORK}/source/README")
file(REMOVE_RECURSE "${WORK}" "${WORK}.out" "${WORK}.err")
