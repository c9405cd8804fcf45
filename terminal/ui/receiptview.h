#pragma once

#include <QImage>
#include <QScrollArea>

class QLabel;

/// Shows a receipt's picture as wide as there is room for, scrolled from top to bottom.
class ReceiptView final : public QScrollArea
{
    Q_OBJECT

public:
    explicit ReceiptView(QWidget *parent = nullptr);

    /// A null image shows `placeholder` instead.
    void setReceipt(const QImage &image, const QString &placeholder);
    const QImage &receipt() const { return m_image; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    QImage m_image;
    QLabel *m_label;
};
