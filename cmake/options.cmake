# Warnings, hardening and sanitizers of our own targets; an interface, so that nothing leaks to those who link us. The
# presets make warnings errors; whoever adds this folder to a project of their own decides that for themselves.
add_library(quillon_options INTERFACE)

# GCC 12 takes the concatenation of short strings for an overlapping copy; hence -Wno-restrict.
target_compile_options(quillon_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused
    -Wconversion -Wsign-conversion $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# Programs that load anywhere, tables of the linker that nothing writes after the start, guarded stacks and checked copies.
include(CheckPIESupported)
check_pie_supported()
if(QUILLON_SANITIZE)
    add_compile_options(-fsanitize=${QUILLON_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUILLON_SANITIZE})
    # With sanitizers GCC 12 takes std::function inside std::regex for uninitialised.
    target_compile_options(quillon_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
else()
    set(is_release "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
    target_compile_options(quillon_options INTERFACE
        "$<${is_release}:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    target_link_options(quillon_options INTERFACE "$<${is_release}:-Wl,-z,relro;-Wl,-z,now>")
endif()
