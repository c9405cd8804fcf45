#include "modulepage.h"

#include <plugin/pluginhost.h>

#include <QDir>
#include <QLabel>
#include <QStringList>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QString row(const QString &title, const QString &value)
{
    return QStringLiteral("<tr><td style=\"padding-right:16px\">%1</td><td><b>%2</b></td></tr>")
        .arg(title, value.toHtmlEscaped());
}

QString providersText(const QSet<qint64> &providers)
{
    QList<qint64> sorted = providers.values();
    std::sort(sorted.begin(), sorted.end());
    QStringList texts;
    for (const qint64 provider : qAsConst(sorted))
        texts.append(QString::number(provider));
    return texts.join(QStringLiteral(", "));
}

} // namespace

ModulePage::ModulePage(const PluginHost &host, QWidget *parent)
    : QWidget(parent),
      m_host(host),
      m_identity(new QLabel(this)),
      m_description(new QTextBrowser(this))
{
    m_identity->setObjectName(QStringLiteral("lModuleIdentity"));
    m_identity->setTextFormat(Qt::RichText);
    m_identity->setWordWrap(true);
    m_identity->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_identity->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_description->setObjectName(QStringLiteral("tbModuleDescription"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_identity);
    layout->addWidget(m_description, 1);
    refresh();
}

void ModulePage::refresh()
{
    if (!m_host.isLoaded()) {
        const QString reason =
            m_host.error().isEmpty() ? tr("Модуль не подключён.") : m_host.error();
        m_identity->setText(QStringLiteral("<p><b>%1</b></p>").arg(reason.toHtmlEscaped()));
        m_description->setPlainText(m_host.details());
        return;
    }
    const PluginHost::Identity &identity = m_host.identity();
    m_identity->setText(QStringLiteral("<table>") + row(tr("Модуль"), identity.caption)
                        + row(tr("Имя"), identity.name) + row(tr("Версия"), identity.version)
                        + row(tr("Сборка"), identity.build)
                        + row(tr("Поставщики"), providersText(identity.providers))
                        + row(tr("Файл"), QDir::toNativeSeparators(m_host.file()))
                        + QStringLiteral("</table>"));
    m_description->setHtml(identity.description);
}
