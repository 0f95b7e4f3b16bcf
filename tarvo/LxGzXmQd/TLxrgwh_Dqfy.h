#pragma once

#include <QDialog>

class QListWidget;

// "地区复用": the regions that have rows for the current time, to copy the grid's rows into.
class TLxrgwh_Dqfy : public QDialog
{
    Q_OBJECT
public:
    TLxrgwh_Dqfy(const QString& sj, QWidget* parent = nullptr);
    QListWidget* list() const { return m_list; }

signals:
    void closeLxrgwh();
    void signalRegionsChosen(const QStringList& regions);

public slots:
    void onBtnOkClicked();

private:
    QListWidget* m_list;
};
