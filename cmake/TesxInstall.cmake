# What "cmake --install" puts where: the module, the two programs, and the framework as a CMake package.
#
# The framework's archives have to be linked whole. A class record is a static object that nobody names, and a linker
# that takes from an archive only what is asked for would leave the class out: created by name, it would not be found.
# So a consumer links the targets TesseraExchange::<layer>, which see to that, and never the archives behind them.
include(CMakePackageConfigHelpers)

set(framework_layers platform foundation persistence appservices components discovery exportscripts wire)
set(framework_libraries_persistence expat)
set(framework_libraries_exportscripts tinyxml2)
set(framework_libraries_wire nanomsg)
if(WIN32)
    set(framework_libraries_platform Threads::Threads ${TESX_WINDOWS_LIBRARIES})
    list(APPEND framework_libraries_wire ws2_32 mswsock)
else()
    set(framework_libraries_platform Threads::Threads utf8proc md ${CMAKE_DL_LIBS})
endif()

foreach(layer IN LISTS framework_layers)
    add_library(archive_${layer} STATIC $<TARGET_OBJECTS:tesx_${layer}>)
    set_target_properties(archive_${layer} PROPERTIES OUTPUT_NAME TesseraExchange_${layer} LINKER_LANGUAGE CXX
                                                      EXPORT_NAME archive_${layer})
    target_link_libraries(archive_${layer} INTERFACE ${framework_libraries_${layer}})

    add_library(framework_${layer} INTERFACE)
    set_target_properties(framework_${layer} PROPERTIES EXPORT_NAME ${layer})
    # Here and not at the archive: what is linked whole passes on nothing but itself.
    target_compile_features(framework_${layer} INTERFACE cxx_std_20)
    target_include_directories(framework_${layer}
                               INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/TesseraExchange>)
    get_property(below TARGET tesx_${layer} PROPERTY TESX_LAYERS)
    list(TRANSFORM below REPLACE "^tesx_" "framework_")
    target_link_libraries(framework_${layer} INTERFACE "$<LINK_LIBRARY:WHOLE_ARCHIVE,$<TARGET_NAME:archive_${layer}>>" ${below})
    install(TARGETS archive_${layer} framework_${layer} EXPORT TesseraExchangeTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}/TesseraExchange COMPONENT framework)
endforeach()

foreach(folder platform foundation persistence appservices components discovery exportscripts shell/hostapi)
    get_filename_component(parent ${folder} DIRECTORY)
    install(DIRECTORY src/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TesseraExchange/${parent}
            COMPONENT framework FILES_MATCHING PATTERN "*.h" PATTERN "linux" EXCLUDE PATTERN "windows" EXCLUDE)
endforeach()
install(FILES src/link/LinkSocket.h src/link/WireMessage.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TesseraExchange/link COMPONENT framework)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/TesseraExchange)
install(EXPORT TesseraExchangeTargets NAMESPACE TesseraExchange:: DESTINATION ${package_folder} COMPONENT framework)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/TesseraExchangeConfig.cmake
     "include(CMakeFindDependencyMacro)\nfind_dependency(Threads)\n"
     "include(\${CMAKE_CURRENT_LIST_DIR}/TesseraExchangeTargets.cmake)\n")
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/TesseraExchangeConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/TesseraExchangeConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/TesseraExchangeConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT framework)
