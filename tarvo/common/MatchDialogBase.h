#pragma once

#include <QDialog>

#include <functional>

class BaseDataItem;
class DbZbZgClItem;
class DbZbZgClModel;
class KeywordDelegate;
class QAbstractItemModel;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableView;
class QToolButton;
class VXProgressBar;

// The frame shared by the dialogs that put a tender's materials in correspondence with the
// bid's: the comparison grid above, the group "(匹配设置操作)" with the pairing buttons, the
// two keyword fields with their button, the counter line, the bid materials' tabs below and
// "确定" / "取消". A subclass fills the grid and the tabs, implements the slots and says how
// its changes are applied. Closing with unsaved pairs asks first.
class MatchDialogBase : public QDialog
{
    Q_OBJECT
public:
    MatchDialogBase(const QString& searchText, QWidget* parent);

    QTableView* grid() const { return m_grid; }
    QTabWidget* tabs() const { return m_tabs; }
    QLabel* counter() const { return m_counter; }
    QLineEdit* nameEdit() const { return m_name; }
    QLineEdit* modelEdit() const { return m_model; }
    QPushButton* searchButton() const { return m_search; }
    QToolButton* makePairButton() const { return m_makePair; }
    QToolButton* unpairButton() const { return m_unpair; }
    QToolButton* previousButton() const { return m_previous; }
    QToolButton* nextButton() const { return m_next; }
    QPushButton* acceptButton() const { return m_accept; }
    QGroupBox* pairGroup() const { return m_group; }
    bool isModified() const { return m_modified; }
    // The record under the grid's cursor, or null.
    DbZbZgClItem* currentRecord() const;
    // The record under the cursor when it is a tender row; otherwise text is shown (titled
    // "操作提示") and null is given.
    DbZbZgClItem* currentTenderRow(const QString& text);
    void selectRecord(const DbZbZgClItem* record);

public slots:
    virtual void slotBtnMakeApair() = 0;
    virtual void slotBtnUnpair() = 0;
    virtual void slotBtnSearch() = 0;
    virtual void slotBtnAccept() = 0;
    virtual void slotBtnReject() = 0;

protected:
    // The top row of the subclass's own buttons.
    QHBoxLayout* topBar() const { return m_topBar; }
    // Shows the grid's model with the keyword colouring and the two-level header.
    void setGridModel(DbZbZgClModel* model);
    // Adds a bid-material list as a tab; returns its view.
    QTableView* addMaterialTab(QAbstractItemModel* model, const QString& title);
    void setModified(bool modified) { m_modified = modified; }
    // The counter line from the numbers of matched and unmatched tender materials.
    void showCount(int matched, int unmatched);
    // Applies the keywords to the grid's colouring; the subclass narrows its models.
    void applyKeywordColours();
    // Puts the cursor of a bid-material tab on its first material for which same is true.
    void showMaterial(QTableView* view, const std::function<bool(BaseDataItem*)>& same);
    // Moves the grid's cursor to the previous / next unmatched tender row.
    void moveToUnmatched(int step);
    // Shows the records again, the cursor kept on its record.
    void refreshGrid();
    // A matched tender row is paired anew only when the user agrees.
    bool confirmRepair(const DbZbZgClItem* record);

    void reject() override;
    // Asks the close question (titled "操作提示") when modified: yes applies (the dialog closes
    // if that succeeds), no closes without touching the project.
    void closeAsking();
    // The close question; "暂估材料数据已经修改，是否保存？" unless set.
    void setCloseQuestion(const QString& question) { m_closeQuestion = question; }
    // Runs write inside a record scope that takes everything back if it throws (the exception
    // goes on to the caller's guard); clears the modified flag when done.
    void commitChanges(const std::function<void()>& write, const QString& label);

    static double resolutionRatio();

    // Applying: analyze gives the three flags (price differs, not provisional, provisional
    // without pair); when one is set the options dialog lets the user choose ("继续" returns
    // false, nothing done); then write runs under the progress bar "正在应用招标暂估材料修改，
    // 请等待" with the chosen options, inside a record scope that takes everything back if it
    // throws. Clears the modified flag when done.
    using Analyze = std::function<void(bool& b1, bool& b2, bool& b3)>;
    using Write = std::function<void(bool modifyPrice, bool setProvisional, bool cancelProvisional,
                                     VXProgressBar& progress)>;
    bool applyChanges(const Analyze& analyze, const Write& write, const QString& label);

private:
    QHBoxLayout* m_topBar;
    DbZbZgClModel* gridModel() const;

    QTableView* m_grid;
    KeywordDelegate* m_delegate;
    QGroupBox* m_group;
    QToolButton *m_makePair, *m_previous, *m_unpair, *m_next;
    QLineEdit *m_name, *m_model;
    QPushButton* m_search;
    QLabel* m_counter;
    QTabWidget* m_tabs;
    QPushButton *m_accept, *m_reject;
    bool m_modified = false;
    QString m_closeQuestion;
};
