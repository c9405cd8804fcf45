# Hostile texts point at a server that nobody may ask.
find_package(Qt5 5.15 REQUIRED COMPONENTS Network)

# The handler, the two wizards' shells and their start pages, and what the tests of all wizards have in common.
add_library(plugin_test_support STATIC
    support/billinganswers.cpp support/billinganswers.h
    support/canary.cpp support/canary.h
    support/fakehost.cpp support/fakehost.h
    support/fakepayscontroller.cpp support/fakepayscontroller.h
    support/fakeregister.cpp support/fakeregister.h
    support/guitestguard.cpp support/guitestguard.h
    support/hostdatabase.cpp support/hostdatabase.h
    support/hostileanswers.cpp support/hostileanswers.h
    support/hostiletexts.cpp support/hostiletexts.h
    support/individualstartform.h
    support/keyboardscanner.cpp support/keyboardscanner.h
    support/markingtranslator.h
    support/openwizard.h
    support/sampleproviders.cpp support/sampleproviders.h
    support/scanchecks.h
    support/startpagechecks.h
    support/startpagefields.cpp support/startpagefields.h
    support/startpageform.h
    support/wizardshellchecks.h)
selmar_conventions(plugin_test_support)
target_include_directories(plugin_test_support PUBLIC support)
target_link_libraries(plugin_test_support PUBLIC basixcore molvacore test_support_gui Qt5::Network)

foreach(name IN ITEMS
        individual/tst_selmarindividualwizard individual/tst_sristartpage individual/tst_sristartpagecode
        individual/tst_sristartpageexchange individual/tst_sristartpagerequest individual/tst_sristartpagescan
        legal/tst_selmarlegalwizard legal/tst_srlstartpage legal/tst_srlstartpageexchange
        legal/tst_srlstartpagescan
        tst_handlerstart tst_handlerstartorder tst_selmarrivenholdhandler tst_srdecimalinput tst_srmessagebox tst_srpluginbuild tst_srreplywait
        tst_srscanfield tst_srscannerguard tst_srstartpageexchange tst_srwizardcontext)
    get_filename_component(test ${name} NAME)
    selmar_test(${test}
        SOURCES ${name}.cpp
        LIBRARIES selmar_plugin plugin_test_support Qt5::Widgets
        LABELS plugin
        # Seconds as it is; with sanitizers and their slow unwinder some take minutes.
        TIMEOUT 400)
endforeach()

# The built module, loaded as a host loads it; none of the plugin's objects are linked.
selmar_test(tst_module
    SOURCES module/tst_module.cpp
    LIBRARIES plugin_test_support Qt5::Widgets
    LABELS plugin module)
find_program(SELMAR_NM_PROGRAM NAMES ${CMAKE_NM} nm REQUIRED)
find_program(SELMAR_READELF_PROGRAM NAMES ${CMAKE_READELF} readelf REQUIRED)
target_compile_definitions(tst_module PRIVATE
    SELMAR_PLUGIN_FILE="$<TARGET_FILE:selmarrivenhold>"
    SELMAR_NM="${SELMAR_NM_PROGRAM}"
    SELMAR_READELF="${SELMAR_READELF_PROGRAM}"
    SELMAR_BUILT_WITH_SANITIZERS="${SELMAR_SANITIZERS}")
add_dependencies(tst_module selmarrivenhold)
