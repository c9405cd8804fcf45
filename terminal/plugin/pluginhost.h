#pragma once

#include <QFont>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

class BoxInfo;
class FrHandler;
class IPayByProviderPlugin;
class IPaysControllerWrapper;
class MessageBus;
class Provider;
class QPluginLoader;
class QWidget;

namespace basix {
class FixNumber;
}

/// Loads one payment plugin, wires it to the terminal and runs its dialogs.
///
/// Order of calls: load(), wire(), start() any number of times, unload() (the destructor unloads
/// too). What the plugin says about itself is copied, so it stays readable after unload().
class PluginHost final : public QObject
{
    Q_OBJECT

public:
    /// Why a file was refused.
    enum class Refusal {
        None,
        NoFile,
        NotALibrary,
        NoMetadata,
        ForeignInterface,
        CannotLoad, ///< the system's loader refused it: a missing symbol or library, a foreign Qt
        NoInstance, ///< it loaded, but its object is not a plugin of the promised kind
        AlreadyLoaded
    };
    Q_ENUM(Refusal)

    struct Identity
    {
        QString name;
        QString caption;
        QString description; ///< HTML
        QString version;
        QString build;
        QSet<qint64> providers;
    };

    /// How a payment ended. Whatever it was, the dialog is gone.
    struct Outcome
    {
        bool started = false;  ///< false: the plugin opened no dialog and has told the cashier why
        bool accepted = false; ///< the cashier went through to the end
        bool sent = false;     ///< the plugin posts the payment itself, the terminal must not
        qint64 providerId = -1;
    };

    explicit PluginHost(QObject *parent = nullptr);
    ~PluginHost() override;

    /// Checks the interface identifier in the file's metadata before any of its code runs. False
    /// leaves nothing loaded; refusal(), error() and details() then say why.
    bool load(const QString &file);
    bool isLoaded() const { return m_plugin != nullptr; }
    Refusal refusal() const { return m_refusal; }
    /// What happened and what to do, for the cashier.
    QString error() const { return m_error; }
    /// The words of Qt and of the system's loader, for those who repair it; may be empty.
    QString details() const { return m_details; }
    QString file() const { return m_file; }
    const Identity &identity() const { return m_identity; }
    /// Null when nothing is loaded.
    IPayByProviderPlugin *plugin() const { return m_plugin; }

    /// Hands the plugin everything it works with and starts its workers for this box. The bus must
    /// outlive the plugin; the register and the wrapper become the plugin's and die with it.
    void wire(const QFont &inputFont, const BoxInfo &box, MessageBus &bus,
              std::unique_ptr<FrHandler> fiscalRegister,
              std::unique_ptr<IPaysControllerWrapper> paysController);

    /// Runs a whole payment in the plugin's modal dialog and deletes the dialog.
    Outcome start(const basix::FixNumber &prepay, const Provider &provider, QWidget *parent);
    bool isDialogOpen() const { return m_dialogOpen; }

    /// Stops the plugin and destroys it with what it owns. False, with nothing done, while its
    /// dialog is open.
    bool unload();

private:
    bool refuse(Refusal refusal, const QString &error, const QString &details = QString());
    void readIdentity();

    std::unique_ptr<QPluginLoader> m_loader;
    IPayByProviderPlugin *m_plugin = nullptr;
    Identity m_identity;
    QString m_file;
    Refusal m_refusal = Refusal::None;
    QString m_error;
    QString m_details;
    bool m_dialogOpen = false;
    bool m_workersStarted = false;
};
