# The terminal without its windows.
find_package(Qt5 5.15 REQUIRED COMPONENTS Sql)

selmar_test(tst_crossedfields SOURCES bus/tst_crossedfields.cpp LIBRARIES terminal_core LABELS unit)
find_package(rapidcheck REQUIRED)
selmar_test(tst_crossedfieldsproperties SOURCES bus/tst_crossedfieldsproperties.cpp
    LIBRARIES terminal_core property_support LABELS property)
selmar_test(tst_messagebody SOURCES bus/tst_messagebody.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_wiretext SOURCES bus/tst_wiretext.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_inprocessbus SOURCES bus/tst_inprocessbus.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_busjournal SOURCES bus/tst_busjournal.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_messagetext SOURCES bus/tst_messagetext.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_billingdatabase SOURCES billing/tst_billingdatabase.cpp billing/packs.h billing/seededbilling.h
    LIBRARIES terminal_core LABELS unit)
selmar_test(tst_billingservice SOURCES billing/tst_billingservice.cpp billing/packs.h billing/seededbilling.h
    LIBRARIES terminal_core LABELS unit)
selmar_test(tst_fiscaldocumentchecker SOURCES fiscal/tst_fiscaldocumentchecker.cpp fiscal/receipts.h
    LIBRARIES terminal_core LABELS unit)
selmar_test(tst_fiscaljournal SOURCES fiscal/tst_fiscaljournal.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_emulatedregister SOURCES fiscal/tst_emulatedregister.cpp fiscal/receipts.h
    LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_printertext SOURCES fiscal/tst_printertext.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_receipttext SOURCES fiscal/tst_receipttext.cpp fiscal/receipts.h
    LIBRARIES terminal_core LABELS unit)
selmar_test(tst_packqueries SOURCES payments/tst_packqueries.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_journalquery SOURCES payments/tst_journalquery.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_paymentsstore SOURCES payments/tst_paymentsstore.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_payscontroller SOURCES payments/tst_payscontroller.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_chargejournal SOURCES payments/tst_chargejournal.cpp LIBRARIES terminal_core LABELS unit)
selmar_test(tst_outbox SOURCES payments/tst_outbox.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_sqlstatements SOURCES storage/tst_sqlstatements.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_writecheck SOURCES storage/tst_writecheck.cpp LIBRARIES terminal_core Qt5::Sql LABELS unit)
selmar_test(tst_hostdataseeder SOURCES hostdata/tst_hostdataseeder.cpp LIBRARIES terminal_core LABELS unit)
