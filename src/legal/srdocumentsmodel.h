#pragma once

#include "srdocument.h"

#include <basixcore/fixnumber.h>

#include <QAbstractTableModel>
#include <QHash>
#include <QList>
#include <QMap>
#include <QPair>
#include <QVector>

/// The billing documents of a legal entity as one flat table: per document a subtotal row with a
/// check box and one row per service, and a total row at the end. Columns: document number, name,
/// charge, amount to pay, distributed amount.
///
/// A ticked document is paid: ticking spreads its debt over its services, unticking clears them. No
/// cell is editable: amounts change only through ticks and calcByDebt(). Whatever changes an amount
/// or a tick emits valueChanged(), and only that.
class SRDocumentsModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        NumberColumn,
        NameColumn,
        ChargeColumn,
        ToPayColumn,
        DistributedColumn,
        ColumnCount
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows `documents`, with the captions of the first one, and the account's own totals. A
    /// single document starts ticked, several start unticked; nothing is recalculated and no
    /// valueChanged() emitted.
    void setDocuments(const QList<SrDocument> &documents, const basix::FixNumber &charge,
                      const basix::FixNumber &debt);
    /// The ticked documents as they are distributed now, in the order received.
    QList<SrDocument> documents() const;

    /// True when at least one document is ticked and every ticked one is ready to be paid.
    bool isReady() const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    /// Ticks and unticks (check-state role, document rows) and edits services (edit role). A tick
    /// takes effect although the result is false.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

public slots:
    /// Recomputes every ticked document from its debt and clears every unticked one; ticks nothing.
    void calcByDebt();

signals:
    void valueChanged();

private:
    /// What is asked of a document at every paint and every check of the page, kept from its last
    /// change.
    struct Standing
    {
        basix::FixNumber amount;
        bool ticked = false;
        bool tickedAndReady = false;
    };

    const SrDocument &document(int index) const;
    bool isDocumentRow(int row) const;
    bool isTicked(int row) const;
    void redistribute(int row);
    void updateStanding(int index, bool ticked);
    bool editService(const QPair<int, int> &row, int column, const QVariant &value);
    QVariant documentText(int index, int column) const;
    QVariant serviceText(const QPair<int, int> &row, int column) const;
    QVariant serviceValue(const QPair<int, int> &row, int column) const;
    QVariant totalText(int column) const;

    QList<SrDocument> m_documents; ///< as received, shared with the account they came from
    /// The documents that were changed since then, by index: a tick must not copy a list of
    /// thousands to change one of them.
    QHash<int, SrDocument> m_changed;
    QMap<QString, QString> m_titles;
    basix::FixNumber m_accountCharge;
    basix::FixNumber m_accountDebt;
    /// Per row its document and its service, or for the document's own row a marker that holds the
    /// tick.
    QVector<QPair<int, int>> m_rows;

    QVector<Standing> m_standings; ///< one per document
    basix::FixNumber m_total;      ///< amounts of all documents, ticked or not
    int m_tickedCount = 0;
    int m_tickedAndReadyCount = 0;
};
