// A receipt as it reaches the register: it is checked and laid out, whatever it holds.
#include "fuzztarget.h"

#include <bus/wiretext.h>
#include <fiscal/fiscaldocumentchecker.h>
#include <fiscal/printertext.h>
#include <fiscal/receipttext.h>

FUZZ_TARGET(fiscal_document)
{
    QString error;
    const auto document = WireText::decode(input, &error);
    if (!document)
        return;
    const QVector<FiscalFinding> findings = FiscalDocumentChecker().check(*document);
    bool anyError = false;
    for (const FiscalFinding &finding : findings) {
        FUZZ_REQUIRE(!finding.text.isEmpty(), QStringLiteral("a finding that says nothing"));
        anyError = anyError || finding.severity == FiscalFinding::Severity::Error;
    }
    FUZZ_REQUIRE(FiscalDocumentChecker::printable(findings) != anyError,
                 QStringLiteral("a receipt with an error is printed, or one without is not"));
    FUZZ_REQUIRE(FiscalDocumentChecker::errorText(findings).isEmpty() != anyError,
                 QStringLiteral("a refusal without a reason"));

    const QStringList lines = ReceiptText(*document, {}).lines();
    for (const QString &line : lines) {
        FUZZ_REQUIRE(line.size() <= ReceiptText::WIDTH,
                     QStringLiteral("a line leaves the paper: %1").arg(line));
        FUZZ_REQUIRE(PrinterText::printed(line) == line,
                     QStringLiteral("a line the printer cannot print: %1").arg(line));
    }
}
