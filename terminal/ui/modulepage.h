#pragma once

#include <QWidget>

class PluginHost;
class QLabel;
class QTextBrowser;

/// What the plugin says about itself, or why there is none.
class ModulePage final : public QWidget
{
    Q_OBJECT

public:
    /// `host` must outlive the page.
    explicit ModulePage(const PluginHost &host, QWidget *parent = nullptr);

    /// Reads the host again, after a plugin was loaded or unloaded.
    void refresh();

private:
    const PluginHost &m_host;
    QLabel *m_identity;
    QTextBrowser *m_description;
};
