# Tables, second pages and the payment page of the wizards, and whole payments through them.
add_library(plugin_page_test_support STATIC
    support/testrecords.cpp support/testrecords.h
    support/paymentflow.cpp support/paymentflow.h
    support/wizardbench.cpp support/wizardbench.h
    support/accountpage.h support/columnfit.h support/countingproxy.h support/flattableproxy.h support/sumeditorrows.h support/tabletext.h)
selmar_conventions(plugin_page_test_support)
target_include_directories(plugin_page_test_support PUBLIC support
    $<TARGET_PROPERTY:selmar_wizards,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(plugin_page_test_support PUBLIC plugin_test_support Qt5::Widgets)

# Every test of a page makes a host database of its own, which a slow disk would make the longest part of the test.
set(page_test_environment "")
if(IS_DIRECTORY /dev/shm)
    set(page_test_environment "TMPDIR=/dev/shm")
endif()

# selmar_page_test(NAME SOURCE LABEL [TIMEOUT seconds]): a test that links the whole plugin and the fixtures of the pages.
function(selmar_page_test name source label)
    cmake_parse_arguments(PARSE_ARGV 3 page "" "TIMEOUT" "")
    if(NOT page_TIMEOUT)
        set(page_TIMEOUT 120)
    endif()
    selmar_test(${name} SOURCES ${source}
        LIBRARIES selmar_plugin plugin_page_test_support test_support_gui Qt5::Widgets
        LABELS ${label}
        TIMEOUT ${page_TIMEOUT}
        ENVIRONMENT ${page_test_environment})
endfunction()

selmar_page_test(tst_srservicesmodel individual/tst_srservicesmodel.cpp model)
selmar_page_test(tst_srcountersmodel individual/tst_srcountersmodel.cpp model)
selmar_page_test(tst_srdocumentsmodel legal/tst_srdocumentsmodel.cpp model)
selmar_page_test(tst_srcounteritemdelegate individual/tst_srcounteritemdelegate.cpp unit)
selmar_page_test(tst_srsumitemdelegate individual/tst_srsumitemdelegate.cpp unit)
selmar_page_test(tst_srlsumitemdelegate legal/tst_srlsumitemdelegate.cpp unit)
selmar_page_test(tst_srfiscalreadiness tst_srfiscalreadiness.cpp unit)
selmar_page_test(tst_srpagetransfer tst_srpagetransfer.cpp unit)
selmar_page_test(tst_srtablecolumns tst_srtablecolumns.cpp unit)
selmar_page_test(tst_srtextitemdelegate tst_srtextitemdelegate.cpp unit)
selmar_page_test(tst_sraccountview tst_sraccountview.cpp unit)
selmar_page_test(tst_srwizardheader tst_srwizardheader.cpp unit)
selmar_page_test(tst_sripaymentpage individual/tst_sripaymentpage.cpp dialog)
selmar_page_test(tst_sripaymentpagecard individual/tst_sripaymentpagecard.cpp dialog)
selmar_page_test(tst_sripaymentpageterminal individual/tst_sripaymentpageterminal.cpp dialog)
selmar_page_test(tst_sripaymentpagefinish individual/tst_sripaymentpagefinish.cpp dialog)
selmar_page_test(tst_sripaymentpagegone individual/tst_sripaymentpagegone.cpp dialog)
selmar_page_test(tst_sriservicespage individual/tst_sriservicespage.cpp dialog)
selmar_page_test(tst_srlservicespage legal/tst_srlservicespage.cpp dialog)
selmar_page_test(tst_wizardflow_individual individual/tst_wizardflow_individual.cpp e2e)
selmar_page_test(tst_wizardflow_legal legal/tst_wizardflow_legal.cpp e2e)
# Scores of whole payments each: long on a busy machine.
selmar_page_test(tst_hostiletexts tst_hostiletexts.cpp e2e TIMEOUT 600)
selmar_page_test(tst_wizardlifetime tst_wizardlifetime.cpp e2e TIMEOUT 600)
selmar_page_test(tst_longuse tst_longuse.cpp e2e TIMEOUT 600)
target_link_libraries(tst_longuse PRIVATE test_support_use)
