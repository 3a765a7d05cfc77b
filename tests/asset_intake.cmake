# Runs asset_intake on folders with names, links and changes that are easy to get wrong:
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
        # Output goes to files: the desktop that Wine starts keeps a pipe open for seconds after each run.
        execute_process(COMMAND ${EMULATOR} "${INTAKE}" ${ARGN}
            RESULT_VARIABLE status OUTPUT_FILE "${WORK}.out" ERROR_FILE "${WORK}.err")
        file(READ "${WORK}.out" out)
        file(READ "${WORK}.err" err)
        if(NOT EMULATOR OR NOT "${out}${err}" STREQUAL "")
            break() # the program always prints something; once in thousands of runs Wine does not start it
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
run(0 --list ${folders})
expect_in_output("Copied (${count} files")
expect_in_output("duplicate of")
expect_content(library/a.png.bak "the user's own")
expect_content("library/a copy.png" "content of a.png")
expect_content("library/con_005 copy.txt" "content of sub/con_005.txt")
if(NOT EMULATOR)
    expect_content(library/_nul.txt "content of nul.txt")
endif()
expect_content("library/README copy" "content of sub/README")
expect_content("library/manifest copy.json" "content of manifest.json")

run(0 ${folders})
expect_in_output("Nothing to copy (0 files")
if(out MATCHES "already there|duplicate of")
    message(FATAL_ERROR "without --list, files that are not copied are shown:\n${out}")
endif()

# A killed run saves no manifest. The next run recognises the copies by their content.
file(REMOVE "${WORK}/library/manifest.json")
run(0 ${folders})
expect_in_output("Nothing to copy (0 files")

file(WRITE "${WORK}/source/README" "changed")
run(0 ${folders})
expect_content(library/README "changed")
expect_content(library/README.bak "content of README")

# A backup is not an asset, so that a source with the content of a backup is copied.
file(WRITE "${WORK}/source/README.old" "content of README")
run(0 ${folders})
expect_in_output("Copied (1 files")

# A duplicate that has changed is no source of the asset any more. A change of the other source then replaces
# the asset.
file(WRITE "${WORK}/source/sub/mesh.GLB" "other")
run(0 ${folders})
file(WRITE "${WORK}/source/sub/again.glb" "changed too")
run(0 ${folders})
expect_content(library/again.glb "changed too")

# An asset that was changed in the library no longer has the content of its source, which is copied again.
file(WRITE "${WORK}/library/x.slvar" "CONTENT of link/x.slvar")
run(0 ${folders})
expect_in_output("Copied (1 files")
if(CMAKE_HOST_SYSTEM_NAME STREQUAL Linux AND NOT EMULATOR)
    file(CREATE_LINK /proc/self/mem "${WORK}/source/unreadable.png" SYMBOLIC) # no memory is mapped at address 0
    file(CREATE_LINK nowhere "${WORK}/source/dangling.png" SYMBOLIC)
    execute_process(COMMAND sh -c "touch \"$1$(printf '\\351')\"" sh "${WORK}/source/not UTF-8 ")
    run(1 ${folders})
    expect_in_output("(0 files, 0 bytes), 3 failed")
    file(GLOB strange "${WORK}/source/not*")
    file(REMOVE "${WORK}/source/unreadable.png" "${WORK}/source/dangling.png" ${strange})

    # Copies that fail lose nothing, and the next run makes them.
    string(REPEAT "large " 10000 large)
    file(WRITE "${WORK}/source/a.png" "${large}")
    file(WRITE "${WORK}/source/large 1.png" "${large}")
    file(WRITE "${WORK}/source/large 2.png" "${large}2")
    file(WRITE "${WORK}/source/large 3.png" "${large}2")
    set(EMULATOR sh -c "trap '' XFSZ && ulimit -f 64 && exec \"$@\"" sh) # no file of more than 32 KiB
    run(1 ${folders})
    expect_in_output("(0 files, 0 bytes), 4 failed")
    expect_in_output("/source/large 3.png  it cannot be copied")
    expect_content("library/a copy.png" "content of a.png")
    unset(EMULATOR)
    run(0 ${folders})
    expect_in_output("Copied (2 files")
    expect_content("library/a copy.png.bak" "content of a.png")
    expect_content("library/large 2.png" "${large}2")
endif()

# If the first source of an asset changes, the asset keeps its name and belongs to the duplicate alone. The
# temporary file of a copy that was killed is not an asset.
file(WRITE "${WORK}/source/twin 1" "twin")
file(WRITE "${WORK}/source/twin 2" "twin")
run(0 ${folders})
file(WRITE "${WORK}/source/twin 1" "alone")
file(WRITE "${WORK}/library/3w5e11264sgsf-12.tmp" "alone")
run(0 ${folders})
expect_in_output("Copied (1 files")
expect_in_output("new, as twin 1 copy")
file(READ "${WORK}/library/manifest.json" manifest)
if(NOT manifest MATCHES "/twin 2\".*/twin 1\"" OR manifest MATCHES "/twin 1\".*/twin 1\"")
    message(FATAL_ERROR "the twins are not one asset each:\n${manifest}")
endif()
file(WRITE "${WORK}/source/twin 2" "alone too")
run(0 ${folders})
expect_content("library/twin 1" "twin")
expect_content("library/twin 2" "alone too")

# A name that is too long for a number or ".bak" behind it.
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

# The manifest of another program is not replaced. A library inside the source is left out.
file(WRITE "${WORK}/foreign/manifest.json" "{\"name\": \"an app\"}")
run(1 "${WORK}/source" "${WORK}/foreign")
expect_content(foreign/manifest.json "{\"name\": \"an app\"}")
run(0 "${WORK}/source" "${WORK}/source/library")
run(0 "${WORK}/source" "${WORK}/source/library")
expect_in_output("Nothing to copy (0 files")

run(0 --help)
expect_in_output("--list")
run(2 --unknown ${folders})
run(2 "${WORK}/missing" "${WORK}/library")
run(2 "${WORK}/source")
run(2 "${WORK}/source/sub" "${WORK}/source")
run(1 "${WORK}/source" "${WORK}/source/README")
file(REMOVE_RECURSE "${WORK}" "${WORK}.out" "${WORK}.err")
