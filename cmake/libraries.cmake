# Everything that the libraries for others have in common: version, language, options, and the headers that callers may
# include. Headers keep their folders below one include root, in the source tree and where they are installed.

# quillon_library(NAME HEADERS FILE...): the files are below the current folder. Whatever else a library links stands in
# its own folder.
function(quillon_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS")
    add_library(quillon::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    target_compile_features(${name} PUBLIC cxx_std_20)
    # For our own build alone, so that the exported targets know nothing of it.
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:quillon_options>)
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_HEADERS})
endfunction()
