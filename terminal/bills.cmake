# Bills with payment codes, and a scanner that reads them and types them in.
#
#     terminal_bills_ui -> terminal_codes -> terminal_core
find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets)
find_package(PkgConfig REQUIRED)
pkg_check_modules(qrencode REQUIRED IMPORTED_TARGET libqrencode)
find_package(ZXing REQUIRED)

add_library(terminal_codes STATIC
    bills/bill.h bills/bill.cpp
    bills/billhtml.h bills/billhtml.cpp
    bills/billwriter.h bills/billwriter.cpp
    bills/codeencoding.h bills/codeencoding.cpp
    bills/paymentcode.h bills/paymentcode.cpp
    bills/paymentcodereader.h bills/paymentcodereader.cpp
    bills/paymentcoderules.h bills/paymentcoderules.cpp
    bills/qrpicture.h bills/qrpicture.cpp
    bills/qrtextobject.h bills/qrtextobject.cpp
    bills/samplebill.h bills/samplebill.cpp
    scanner/codereader.h scanner/codereader.cpp
    scanner/keyboardlayout.h scanner/keyboardlayout.cpp
    scanner/keyboardscanner.h scanner/keyboardscanner.cpp)
selmar_conventions(terminal_codes)
target_include_directories(terminal_codes PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(terminal_codes PUBLIC terminal_core Qt5::Gui PRIVATE PkgConfig::qrencode ZXing::ZXing)
# The spelling of ZXing's text functions that later versions keep.
target_compile_definitions(terminal_codes PRIVATE ZX_USE_UTF8)

add_library(terminal_bills_ui STATIC
    ui/billspage.h ui/billspage.cpp
    ui/billspreview.h ui/billspreview.cpp
    ui/longwork.h ui/longwork.cpp
    ui/rowlist.h ui/rowlist.cpp
    ui/scannerpage.h ui/scannerpage.cpp
    ui/scannerresult.h ui/scannerresult.cpp
    ui/shownreason.h ui/shownreason.cpp)
selmar_conventions(terminal_bills_ui)
target_include_directories(terminal_bills_ui PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(terminal_bills_ui PUBLIC terminal_codes Qt5::Widgets)
