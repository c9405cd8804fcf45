#pragma once

#include <QTextBrowser>

/// Shows the document of an account, whose texts come from billing.
///
/// Nothing is ever loaded for it: the document has no pictures of its own, and whatever would ask
/// for a file or for the network got into it by mistake. Its texts are bounded and cleaned for the
/// screen (SrShownText); the document itself is not changed.
class SrAccountView : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    /// Takes the place of what was shown; `html` is a document of SrHtml.
    void showAccount(const QString &html);

    QVariant loadResource(int type, const QUrl &name) override;
};
