#pragma once

#include <QWidget>

class QComboBox;
class QPushButton;
class QTableView;
class QTextBrowser;
class SporadicTableModel;

// "地区零星工作项目人工单价查询": the side panel of the daywork page. Choose a region and a
// start time, see the published trades and prices, pick a price into the bill, edit the rates
// in place or in the maintenance dialog.
class SporadicWorksWidget : public QWidget
{
    Q_OBJECT
public:
    explicit SporadicWorksWidget(QWidget* parent = nullptr);

    SporadicTableModel* model() const { return m_model; }
    QComboBox* locationBox() const { return m_location; }
    QComboBox* startTimeBox() const { return m_startTime; }
    QTableView* tableView() const { return m_table; }
    bool isReadOnly() const { return m_readOnly; }
    // Newest first, by the year, month and day numbers in the text.
    static QStringList SortTimes(QStringList times);
    // Reloads the lists and the grid, keeping the region.
    void Reload();
    // The region of the project shown: the region chosen when the user has not chosen one
    // that the store holds.
    void SetProjectRegion(const QString& region);
    // The region the user chose last (application settings), empty when none.
    static QString RememberedRegion();

signals:
    void signalSelectSporadicItem(double price);

public slots:
    void slotChangeReadOnly(bool readOnly);
    void slotServiceNotify(const QByteArray message);
    void slotSelectConditonChanged();
    void slotLocationTextChanged(const QString& text);
    void slotUpdateStartTimeCBox();
    void on_selectBtn_clicked();
    void on_saveBtn_clicked();
    void on_GiveUpBtn_clicked();
    void on_addBtn_clicked();
    void on_delBtn_clicked();
    void on_editBtn_clicked();
    void doubleClickedSLot(const QModelIndex& index);
    void slotLocationChosen(const QString& text);

private:
    void UpdateLocationCBox();
    void UpdatecolumWith();
    void connectTimeBox(bool on);
    QWidget* section(const QString& name, const QString& layoutName);

    SporadicTableModel* m_model;
    QComboBox* m_location = nullptr;
    QComboBox* m_startTime = nullptr;
    QTableView* m_table = nullptr;
    QTextBrowser* m_text = nullptr;
    QPushButton* m_select = nullptr;
    bool m_readOnly = false;
    QString m_projectRegion;
};
