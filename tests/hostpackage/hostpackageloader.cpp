#include <molvacore/ipaybyproviderplugin.h>

#include <QApplication>
#include <QFile>
#include <QPluginLoader>
#include <QSet>
#include <QTextStream>

namespace {

/// Files of the host's libraries that this process has mapped.
QSet<QString> loadedHostLibraries()
{
    QSet<QString> files;
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return files;
    const QStringList lines = QString::fromLocal8Bit(maps.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const QString file = line.section(QLatin1Char(' '), 5, -1, QString::SectionSkipEmpty);
        if (file.contains(QStringLiteral("libmolvacore"))
            || file.contains(QStringLiteral("libbasixcore")))
            files.insert(file);
    }
    return files;
}

} // namespace

/// hostpackage_loader PLUGIN PREFIX: loads the plugin with the host's libraries below PREFIX and
/// nothing but those.
int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    QTextStream out(stdout);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        out << "usage: hostpackage_loader PLUGIN PREFIX\n";
        return 2;
    }
    QPluginLoader loader(arguments.at(1));
    auto *plugin = qobject_cast<IPayByProviderPlugin *>(loader.instance());
    if (!plugin) {
        out << "not loaded: " << loader.errorString() << '\n';
        return 1;
    }
    const QSet<QString> libraries = loadedHostLibraries();
    for (const QString &file : libraries) {
        if (!file.startsWith(arguments.at(2))) {
            out << "a second copy of a host library is loaded: " << file << '\n';
            return 1;
        }
    }
    if (libraries.size() != 2 || !plugin->providerIsSupported(qint64(18722))) {
        out << "loaded, but not usable\n";
        return 1;
    }
    out << plugin->pluginName() << ' ' << plugin->pluginVersion() << ' ' << plugin->pluginBuild()
        << '\n';
    return loader.unload() ? 0 : 1;
}
