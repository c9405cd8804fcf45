#include "billspreview.h"

#include <QLabel>

namespace {

constexpr int smallestWidth = 480; // pixels: the small print of an A4 page is still legible

} // namespace

BillsPreview::BillsPreview(QWidget *parent) : QScrollArea(parent), m_label(new QLabel(this))
{
    m_label->setObjectName(QStringLiteral("lBillPicture"));
    m_label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    setWidget(m_label);
    setWidgetResizable(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Квитанция"));
}

void BillsPreview::setBill(const QImage &picture)
{
    m_picture = picture;
    fit();
}

void BillsPreview::setNote(const QString &note)
{
    m_picture = QImage();
    m_label->setPixmap(QPixmap());
    m_label->setText(note);
}

void BillsPreview::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    fit();
}

void BillsPreview::fit()
{
    if (m_picture.isNull())
        return;
    const qreal ratio = devicePixelRatioF();
    const int width = qMin(qMax(viewport()->width(), smallestWidth), m_picture.width());
    QPixmap pixmap = QPixmap::fromImage(
        m_picture.scaledToWidth(qMax(1, int(width * ratio)), Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(ratio);
    m_label->setPixmap(pixmap);
}
