#include "applicationsetup.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>

namespace {

constexpr int textSize = 13;  // pixels: the same on every screen and in every picture
constexpr int inputSize = 16; // pixels

/// `installed` is the file in an installed tree; in the tree of a build, which goes first, it
/// stands in the folder `built`.
QString besideTheProgram(const QString &built, const QString &installed)
{
    const QDir above(QDir::cleanPath(QApplication::applicationDirPath() + QStringLiteral("/..")));
    const QString inBuild =
        above.filePath(QStringLiteral("%1/%2").arg(built, QFileInfo(installed).fileName()));
    const QString inPrefix = above.filePath(installed);
    return QFileInfo::exists(inPrefix) && !QFileInfo::exists(inBuild) ? inPrefix : inBuild;
}

} // namespace

ApplicationSetup::ApplicationSetup(QApplication &application)
{
    QApplication::setApplicationName(QStringLiteral("selmar-terminal"));
    QApplication::setOrganizationName(QStringLiteral("selmarrivenhold"));
    QApplication::setApplicationDisplayName(QStringLiteral("Рабочее место кассира"));
    QApplication::setApplicationVersion(QStringLiteral(SELMAR_VERSION));
    // Amounts are typed and shown the same way whatever this machine's own settings are.
    QLocale::setDefault(QLocale(QLocale::Russian, QLocale::RussianFederation));

    if (m_qtTranslator.load(QStringLiteral("qtbase_ru"),
                            QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&m_qtTranslator);
    else
        m_warning =
            QStringLiteral("Русских надписей Qt нет: установите пакет qttranslations5-l10n.");
    if (m_pluginTranslator.load(QStringLiteral(":/translations/selmarrivenhold_ru.qm")))
        QApplication::installTranslator(&m_pluginTranslator);

    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(textSize);
    application.setFont(font);
    // Without such a font every text is blank, and Qt reports nothing.
    if (QFontDatabase().families(QFontDatabase::Cyrillic).isEmpty())
        m_warning =
            QStringLiteral("Шрифта с русскими буквами нет: установите пакет fonts-dejavu-core.");
}

ApplicationSetup::~ApplicationSetup()
{
    QApplication::removeTranslator(&m_pluginTranslator);
    QApplication::removeTranslator(&m_qtTranslator);
}

QFont ApplicationSetup::inputFont() const
{
    QFont font = QApplication::font();
    font.setPixelSize(inputSize);
    return font;
}

QString ApplicationSetup::defaultPluginFile()
{
    return besideTheProgram(QStringLiteral("plugins"),
                            QStringLiteral(SELMAR_PLUGIN_INSTALL_DIR "/selmarrivenhold.so"));
}

QString ApplicationSetup::brokerModuleFile()
{
    return besideTheProgram(QStringLiteral("modules"),
                            QStringLiteral(SELMAR_MODULE_INSTALL_DIR "/selmarbroker.so"));
}

QString ApplicationSetup::defaultDataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}
