# The libraries that we call, each as one imported target. All of them are packages of the distribution.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

pkg_check_modules(expat REQUIRED IMPORTED_TARGET expat)
pkg_check_modules(nanomsg REQUIRED IMPORTED_TARGET nanomsg)
pkg_check_modules(tinyxml2 REQUIRED IMPORTED_TARGET tinyxml2)
pkg_check_modules(sndfile REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(utf8proc REQUIRED IMPORTED_TARGET libutf8proc)
pkg_check_modules(md REQUIRED IMPORTED_TARGET libmd)
find_package(CLI11 REQUIRED)

if(TESX_BUILD_TESTS)
    find_package(GTest REQUIRED)
endif()
if(TESX_BUILD_BENCHMARKS)
    find_package(benchmark REQUIRED)
    # Measured beside our own reader of documents.
    pkg_check_modules(pugixml REQUIRED IMPORTED_TARGET pugixml)
endif()
