#include "codecommands.h"

#include "commandline.h"

#include <bills/samplebill.h>
#include <scanner/codereader.h>

#include <cstdio>

namespace {

bool failed(const QString &error)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(error));
    return false;
}

} // namespace

bool CodeCommands::wanted(const CommandLine &commandLine)
{
    return !commandLine.billAccount.isEmpty() || !commandLine.codePicture.isEmpty();
}

bool CodeCommands::run(const CommandLine &commandLine)
{
    QString error;
    if (!commandLine.billAccount.isEmpty()) {
        return writeSampleBill(commandLine.billAccount, commandLine.billEncoding,
                               commandLine.billFile, &error, commandLine.billDocument)
            || failed(error);
    }
    const QString text = readCodeFromPicture(commandLine.codePicture, &error);
    if (text.isEmpty())
        return failed(error);
    std::fprintf(stdout, "%s\n", qUtf8Printable(text));
    return true;
}
