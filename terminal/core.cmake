# The terminal without its windows: bus, billing, fiscal register, payments and their recovery, host data.
find_package(Qt5 5.15 REQUIRED COMPONENTS Core Sql)
add_library(terminal_core STATIC
    app/optionvalues.h app/optionvalues.cpp
    app/programoptions.h app/programoptions.cpp
    bus/brokermodule.h bus/brokermodule.cpp
    bus/busjournal.h bus/busjournal.cpp
    bus/busjournalentry.h
    bus/busmessage.h
    bus/crossedfields.h bus/crossedfields.cpp
    bus/ibrokermodule.h
    bus/inprocessbus.h bus/inprocessbus.cpp
    bus/messagebody.h bus/messagebody.cpp
    bus/messagebus.h bus/messagebus.cpp
    bus/messagetext.h bus/messagetext.cpp
    bus/terminalexport.h
    bus/wiretext.h bus/wiretext.cpp
    billing/billingdatabase.h billing/billingdatabase.cpp
    billing/billinganswerwriter.h billing/billinganswerwriter.cpp
    billing/billingendpoint.h billing/billingendpoint.cpp
    billing/billingpackintake.h billing/billingpackintake.cpp
    billing/billingrecords.h
    billing/billingschema.h billing/billingschema.cpp
    billing/billingservice.h billing/billingservice.cpp
    billing/paypackreader.h billing/paypackreader.cpp
    billing/sampleaccounts.h billing/sampleaccounts.cpp
    billing/samplecatalogue.h billing/samplecatalogue.cpp
    devices/devicecontrol.h devices/devicecontrol.cpp
    devices/devicestates.h devices/devicestates.cpp
    fiscal/emulatedregister.h fiscal/emulatedregister.cpp
    fiscal/fiscaldocumentchecker.h fiscal/fiscaldocumentchecker.cpp
    fiscal/fiscalfindings.h fiscal/fiscalfindings.cpp
    fiscal/fiscaljournal.h fiscal/fiscaljournal.cpp
    fiscal/fiscallinechecker.h fiscal/fiscallinechecker.cpp
    fiscal/fiscalrecord.h fiscal/fiscalrecord.cpp
    fiscal/printertext.h fiscal/printertext.cpp
    fiscal/receipttape.h fiscal/receipttape.cpp
    fiscal/receipttext.h fiscal/receipttext.cpp
    fiscal/registerclock.h
    hostdata/hostdataseeder.h hostdata/hostdataseeder.cpp
    payments/chargejournal.h payments/chargejournal.cpp
    payments/journalquery.h payments/journalquery.cpp
    payments/outbox.h payments/outbox.cpp
    payments/paymentrecord.h payments/paymentrecord.cpp
    payments/packqueries.h payments/packqueries.cpp
    payments/paymentrows.h payments/paymentrows.cpp
    payments/paymentsstore.h payments/paymentsstore.cpp
    payments/payscontroller.h payments/payscontroller.cpp
    payments/payscontrollerwrapper.h payments/payscontrollerwrapper.cpp
    recovery/chargematcher.h recovery/chargematcher.cpp
    recovery/faultpoint.h recovery/faultpoint.cpp
    recovery/packrebuilder.h recovery/packrebuilder.cpp
    recovery/paymentcase.h recovery/paymentcase.cpp
    recovery/paymentreconciler.h recovery/paymentreconciler.cpp
    recovery/privatedata.h recovery/privatedata.cpp
    recovery/receiptorigin.h recovery/receiptorigin.cpp
    storage/jsontext.h storage/jsontext.cpp
    storage/sqlstatement.h storage/sqlstatement.cpp
    storage/sqlstatements.h storage/sqlstatements.cpp
    storage/writecheck.h storage/writecheck.cpp
    text/showntext.h text/showntext.cpp)
selmar_conventions(terminal_core)
target_include_directories(terminal_core PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(terminal_core PUBLIC Qt5::Core basixcore molvacore PRIVATE Qt5::Sql)
