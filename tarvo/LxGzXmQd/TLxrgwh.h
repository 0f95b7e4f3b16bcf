#pragma once

#include "TLxrgwhBean.h"

#include <QDialog>
#include <QList>

class QComboBox;
class QStandardItemModel;
class QTableView;

// "零星人工维护": edits the regional labour-rate store directly, statement by statement.
class TLxrgwh : public QDialog
{
    Q_OBJECT
public:
    TLxrgwh(const QString& dq, const QString& sj, QWidget* parent = nullptr);

    QComboBox* regionBox() const { return m_dq; }
    QComboBox* timeBox() const { return m_sj; }
    QTableView* grid() const { return m_grid; }
    const QList<TLxrgwhBean>& rows() const { return m_rows; }
    QString currentRegion() const;
    QString currentTime() const;
    int currentRow() const;
    void setCurrentRow(int row);

signals:
    void closeLxrgwh();

public slots:
    void slotDqfy();
    void slotAddRow();
    void slotDeleteRow();
    void slotGzwh();
    void slotFindDq(const QString& dq);
    void slotCopyData(const QStringList& regions);
    void slotAddGzwhData(const QString& gz);
    void slotGetGzData(int row, const QString& gz);
    void slotGetBzData(int row, const QString& bz);
    bool slotSaveDate(const QString& field, const QString& value, const QString& fid);

private:
    void loadComboxDq();
    void loadComboxSj();
    void findData(const QString& dq, const QString& sj);
    QStringList comboxBzData();
    void onCellChanged(int row, int column, const QString& text);

    QComboBox* m_dq;
    QComboBox* m_sj;
    QTableView* m_grid;
    QStandardItemModel* m_model;
    QList<TLxrgwhBean> m_rows;
    bool m_filling = false;
};
