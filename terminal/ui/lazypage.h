#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include <functional>
#include <utility>

/// Stands in for a page that takes its time to make, and makes it when it is first shown: a window
/// opens without waiting for pages that nobody has asked for yet.
///
/// Until then the page has no size of its own and nothing in it can be found or get the focus. Once
/// made it stays.
template<class Page>
class LazyPage final : public QWidget
{
public:
    /// Gives the page its owner, the widget that is passed.
    using Maker = std::function<Page *(QWidget *)>;

    explicit LazyPage(Maker make, QWidget *parent = nullptr)
        : QWidget(parent), m_make(std::move(make))
    {
    }

    /// The page; makes it if nobody has seen it yet.
    Page &page()
    {
        if (!m_page) {
            m_page = m_make(this);
            auto *layout = new QVBoxLayout(this);
            layout->setContentsMargins(0, 0, 0, 0);
            layout->addWidget(m_page);
        }
        return *m_page;
    }

    /// Before anything is laid out, so that the page is there when the focus looks for a place.
    void setVisible(bool visible) override
    {
        if (visible)
            page();
        QWidget::setVisible(visible);
    }

private:
    Maker m_make;
    Page *m_page = nullptr;
};
