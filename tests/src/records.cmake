# The records: no window, no display; receipts and packs read a host database of their own in a temporary folder.
add_library(records_test_support STATIC
    billingsamples.cpp billingsamples.h
    goldenfile.cpp goldenfile.h
    hoststation.cpp hoststation.h)
selmar_conventions(records_test_support)
target_include_directories(records_test_support PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(records_test_support PUBLIC Qt5::Core molvacore basixcore)
target_compile_definitions(records_test_support PRIVATE
    SELMAR_GOLDEN_DIR="${CMAKE_CURRENT_SOURCE_DIR}/golden"
    SELMAR_GOLDEN_FAIL_DIR="${PROJECT_BINARY_DIR}/tests/golden")

foreach(name IN ITEMS
        tst_sraccount tst_srbillingexchange tst_srcounter tst_srdocument tst_srhtml tst_srobject tst_srpayment
        tst_srpaymentqr tst_srreceipt tst_srreceiptaddress tst_srreceiptline tst_srrequest
        tst_srrequestseed tst_srservice
        tst_srservicecells tst_srshowntext tst_srvalues
        individual/tst_srpersonalaccount individual/tst_srpersonalaccounthtml individual/tst_srpersonalaccountreceipt
        legal/tst_srlegalaccount legal/tst_srlegalaccounthtml legal/tst_srlegalaccountreceipt)
    get_filename_component(test ${name} NAME)
    selmar_test(${test}
        SOURCES ${name}.cpp
        LIBRARIES selmar_records records_test_support test_support
        LABELS unit)
endforeach()
