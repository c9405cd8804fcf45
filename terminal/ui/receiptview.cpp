#include "receiptview.h"

#include <QLabel>
#include <QScrollBar>

ReceiptView::ReceiptView(QWidget *parent) : QScrollArea(parent), m_label(new QLabel(this))
{
    m_label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_label->setWordWrap(true);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setMargin(0);
    setWidget(m_label);
    setWidgetResizable(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Чек"));
}

void ReceiptView::setReceipt(const QImage &image, const QString &placeholder)
{
    m_image = image;
    if (image.isNull()) {
        m_label->setPixmap(QPixmap());
        m_label->setText(placeholder);
    } else {
        verticalScrollBar()->setValue(0);
    }
    fit();
}

void ReceiptView::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    fit();
}

void ReceiptView::fit()
{
    if (m_image.isNull())
        return;
    const qreal ratio = devicePixelRatioF();
    const int width = qMin(viewport()->width(), m_image.width());
    QPixmap pixmap = QPixmap::fromImage(
        m_image.scaledToWidth(qMax(1, int(width * ratio)), Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    m_label->setPixmap(pixmap);
}
