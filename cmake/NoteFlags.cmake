# SPDX-License-Identifier: Apache-2.0

# Those of a builder's compiler flags that tell how code is made. Places on his machine are left out: the note that has
# the flags is shipped, and two builders get the same bytes.
function(keep_flags_of_code output flags)
    # Options with a place as the next word, or right behind the letter.
    set(places "^-(I|L|B|isystem|iquote|idirafter|include|imacros|isysroot|iprefix|iwithprefix|iwithprefixbefore)$|^--sysroot$")
    set(kept "")
    set(isPlace FALSE)
    separate_arguments(words UNIX_COMMAND "${flags}")
    foreach(word IN LISTS words)
        if(isPlace)
            set(isPlace FALSE)
        elseif(word MATCHES "${places}")
            set(isPlace TRUE)
        # A slash that does not begin an option, as /O2, is a path's. A prefix map names the place that it hides.
        elseif(NOT word MATCHES "^-[IL]|^-f[a-z]+-prefix-map=|^@|.[/\\\\]|^--sysroot=")
            string(APPEND kept " ${word}")
        endif()
    endforeach()
    string(STRIP "${kept}" kept)
    set(${output} "${kept}" PARENT_SCOPE)
endfunction()
