#pragma once

#include <QString>
#include <QWizard>

class QAbstractButton;
class QAbstractItemView;
class QDialog;
class QModelIndex;
class QWidget;

/// What a cashier's hands can do: press keys and click with the mouse, in whatever window is in
/// front.
///
/// Nothing is done to a widget that a person could not reach (hidden, disabled, behind a modal
/// window): such an attempt returns false and error() says what stood in the way. Every event goes
/// the way real input goes, through the application's event delivery.
class CashierHands
{
public:
    /// The modal dialog in front, or the active window.
    static QWidget *front();
    /// The shown widget of that object name in the front window, or null.
    static QWidget *find(const QString &objectName);

    bool click(QWidget *widget);
    bool click(const QString &objectName);
    bool clickWizard(QWizard::WizardButton which);
    /// The default button of the message box in front.
    bool confirmMessage();

    /// Types into the widget that has the keyboard focus; any character of any alphabet.
    bool type(const QString &text);
    bool press(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Clicks the field and types over what stands in it.
    bool fill(const QString &objectName, const QString &text);
    /// As a scanner does: into the focused field, fast, with Enter at the end.
    bool scan(const QString &text);

    /// Opens the cell's editor with a double click, types over its content and commits with Enter;
    /// the model has the text when the event loop has run.
    bool enterCell(QAbstractItemView &view, const QModelIndex &index, const QString &text);
    /// Clicks the check box of the cell.
    bool tickCell(QAbstractItemView &view, const QModelIndex &index);
    /// Chooses the cell with the mouse and presses the space bar.
    bool toggleCell(QAbstractItemView &view, const QModelIndex &index);
    /// Types over the number in the input dialog in front and confirms it.
    bool enterAmount(const QString &text);

    QString error() const { return m_error; }

private:
    bool reach(const QWidget *widget, const QString &name);
    bool refuse(const QString &error);

    QString m_error;
};
