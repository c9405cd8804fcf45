#pragma once

#include "accountpage.h"
#include "atend.h"
#include "generatedanswers.h"

#include "individual/sriservicespage.h"
#include "individual/srpersonalaccount.h"
#include "legal/srlegalaccount.h"
#include "legal/srlservicespage.h"

#include <QTableView>
#include <QWizard>

#include <map>
#include <memory>

/// A wizard that stands on its second page, shown off the screen, with an account of a given size.
///
/// Made once per size and kept: several rows use the same page.
template<class Page, class Account>
class OpenPage final
{
public:
    static OpenPage &of(int size)
    {
        static std::map<int, std::unique_ptr<OpenPage>> opened;
        if (opened.empty())
            AtEnd::call([] { opened.clear(); });
        std::unique_ptr<OpenPage> &page = opened[size];
        if (!page)
            page.reset(new OpenPage(size));
        return *page;
    }

    Page &page() { return *m_page; }
    QTableView &table() const { return *m_table; }
    QAbstractItemModel &model() const { return *m_table->model(); }

    /// Back to the first page and, what a row measures, on to this one again.
    void leave() { m_wizard.back(); }
    void enter() { m_wizard.next(); }

private:
    explicit OpenPage(int size)
    {
        auto account = QSharedPointer<Account>::create();
        account->parseCheckList(sized(account.data(), size));
        m_wizard.setPage(0, new AccountPage(account));
        m_page = new Page(&m_wizard);
        m_wizard.setPage(1, m_page);
        m_wizard.resize(800, 600);
        m_wizard.show();
        m_wizard.next();
        m_table = m_page->template findChild<QTableView *>(QStringLiteral("tvServices"));
    }
    /// A contract's size counts documents, an account's services.
    static QVariantList sized(SrLegalAccount *, int size)
    {
        return GeneratedAnswers::contract(size, 2);
    }
    static QVariantList sized(SrPersonalAccount *, int size)
    {
        return GeneratedAnswers::description(GeneratedAnswers::Form::Personal, size);
    }

    QWizard m_wizard;
    Page *m_page = nullptr;
    QTableView *m_table = nullptr;
};

using DocumentsPage = OpenPage<SrLServicesPage, SrLegalAccount>;
using ServicesPage = OpenPage<SrIServicesPage, SrPersonalAccount>;
