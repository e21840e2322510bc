# The libraries that we call, each as one imported target. All of them are packages of the distribution, for Windows
# built from its source archives by tools/windows-libraries.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

pkg_check_modules(expat REQUIRED IMPORTED_TARGET expat)
pkg_check_modules(nanomsg REQUIRED IMPORTED_TARGET nanomsg)
pkg_check_modules(tinyxml2 REQUIRED IMPORTED_TARGET tinyxml2)
pkg_check_modules(sndfile REQUIRED IMPORTED_TARGET sndfile)
find_package(CLI11 REQUIRED)
if(WIN32)
    # Windows's own.
    set(TESX_WINDOWS_LIBRARIES ole32 uuid shell32 advapi32 user32 ntdll)
    # Linked statically; their headers would declare imports otherwise.
    target_compile_definitions(PkgConfig::nanomsg INTERFACE NN_STATIC_LIB=ON)
    target_compile_definitions(PkgConfig::expat INTERFACE XML_STATIC)
else()
    # What Windows has calls of its own for.
    pkg_check_modules(utf8proc REQUIRED IMPORTED_TARGET libutf8proc)
    pkg_check_modules(md REQUIRED IMPORTED_TARGET libmd)
endif()

if(TESX_BUILD_TESTS)
    find_package(GTest REQUIRED)
endif()
if(TESX_BUILD_BENCHMARKS AND NOT WIN32)
    find_package(benchmark REQUIRED)
    # Measured beside our own reader of documents.
    pkg_check_modules(pugixml REQUIRED IMPORTED_TARGET pugixml)
endif()
