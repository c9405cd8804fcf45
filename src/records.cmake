# What the plugin knows of billing, receipts and pay packs. Qt Core and the host's libraries only: no widget may enter here.
add_library(selmar_records OBJECT
    sraccount.cpp sraccount.h
    sranswer.h
    srbillingexchange.cpp srbillingexchange.h
    srcounter.cpp srcounter.h
    srdocument.cpp srdocument.h
    srhtml.cpp srhtml.h
    srjson.cpp srjson.h
    srobject.cpp srobject.h
    srparamlist.h
    srpayment.cpp srpayment.h
    srpaymentqr.cpp srpaymentqr.h
    srreceipt.cpp srreceipt.h
    srreceiptaddress.cpp srreceiptaddress.h
    srreceiptline.cpp srreceiptline.h
    srrequest.cpp srrequest.h
    srservice.cpp srservice.h
    srservicecells.cpp srservicecells.h
    srshowntext.cpp srshowntext.h
    srvalues.cpp srvalues.h
    individual/srpersonalaccount.cpp individual/srpersonalaccount.h
    legal/srlegalaccount.cpp legal/srlegalaccount.h)
selmar_conventions(selmar_records)
selmar_count_lines(selmar_records)
target_include_directories(selmar_records PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(selmar_records PUBLIC Qt5::Core basixcore molvacore)
