#pragma once

#include <QImage>
#include <QScrollArea>

class QLabel;

/// Shows a bill as wide as there is room for, but never too small to read; scrolled from top to
/// bottom.
class BillsPreview final : public QScrollArea
{
    Q_OBJECT

public:
    explicit BillsPreview(QWidget *parent = nullptr);

    void setBill(const QImage &picture);
    /// In place of a bill, why there is none.
    void setNote(const QString &note);
    const QImage &picture() const { return m_picture; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    QImage m_picture;
    QLabel *m_label;
};
