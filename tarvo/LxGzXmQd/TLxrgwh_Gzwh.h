#pragma once

#include "TLxrgwhBean.h"

#include <QDialog>
#include <QList>

class QTableWidget;

// "零星人工工种维护": the trade list file, with each trade marked "√" when a store row uses
// it and "未使用" otherwise; used trades can be neither changed nor deleted.
class TLxrgwh_Gzwh : public QDialog
{
    Q_OBJECT
public:
    explicit TLxrgwh_Gzwh(QWidget* parent = nullptr);
    const QList<TLxrgwhBean>& trades() const { return m_trades; }
    QTableWidget* table() const { return m_table; }
    void setCurrentRow(int row);

    // The add and modify steps once their dialogs returned a name.
    void addTrade(const QString& name);
    void modifyTrade(int row, const QString& name);

signals:
    void closeLxrgwh();
    void signalTradePicked(const QString& trade);

public slots:
    void slotShowTjgc();
    void slotShowXg();
    void slotDelete();
    void slotPick();
    void slotMove(int how); // 0 up, 1 down, 2 to top, 3 to bottom
    void getDataGz(const QString& name);

private:
    void load();
    void showTrades();
    void save();
    int currentRow() const;
    // The focused trade when no list row uses it; otherwise tells the user why not.
    bool unusedCurrentTrade(const QString& refusal);
    QStringList names() const;

    QTableWidget* m_table;
    QList<TLxrgwhBean> m_trades;
};
