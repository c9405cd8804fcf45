#pragma once

#include <QFont>
#include <QString>
#include <QTranslator>

class QApplication;

/// What every window of the terminal stands on: names, the Russian language and number form, the
/// font.
class ApplicationSetup final
{
public:
    /// `application` must outlive the setup.
    explicit ApplicationSetup(QApplication &application);
    ~ApplicationSetup();
    ApplicationSetup(const ApplicationSetup &) = delete;
    ApplicationSetup &operator=(const ApplicationSetup &) = delete;

    /// Large enough to read what the scanner typed from a step away.
    QFont inputFont() const;
    /// Empty when everything is there; a Russian warning when this machine has no font with
    /// Cyrillic letters or no Russian texts of Qt.
    QString warning() const { return m_warning; }

    /// Where the plugin stands that was built or installed with this program.
    static QString defaultPluginFile();
    /// Where this program's module for a message broker stands; see BrokerModule.
    static QString brokerModuleFile();
    static QString defaultDataFolder();

private:
    QTranslator m_qtTranslator;
    QTranslator m_pluginTranslator;
    QString m_warning;
};
