#pragma once

#include "HeaderColumn.h"

#include <QTableView>

// The host's grid. Its columns come from the table-header configuration of a list name;
// the user may save the layout as a named template and switch between templates
// ("默认表头" is the shipped configuration). Templates are stored per list name in the
// user's data folder: TableHeader/<list name>/<template>.json.
class zTableView : public QTableView
{
    Q_OBJECT
public:
    static inline const QString DefaultTemplateName = QStringLiteral("默认表头");

    explicit zTableView(QWidget* parent = nullptr);

    // Loads the shipped header of the list, then the user's last chosen template if any.
    bool LoadTableHeader(const QString& listName);
    QString listName() const { return m_config.listName; }
    QString currentTemplateName() const { return m_currentTemplate; }
    const HeaderConfig& headerConfig() const { return m_config; }
    void applyHeaderConfig(const HeaderConfig& config);
    int fieldOfColumn(int column) const;
    int columnOfField(int field) const;
    bool isEditing() const { return state() == QAbstractItemView::EditingState; }
    void closeEditor(); // commits and closes an open cell editor
    int contentHeightOfRow(int row) const { return sizeHintForRow(row); }

    void setModel(QAbstractItemModel* model) override;

    // The header-template commands (messages 7002-7005) and the template list (7006).
    static void callSwitchTableHeaderConfig(zTableView* view, int type, int scope,
                                            const QString& name);
    static void callSaveUserTemplateToJsonFilePanel(zTableView* view);
    static void callModifyCurrColNamePanel(zTableView* view);
    static void callHeaderSettingsPanel(zTableView* view);
    static QStringList getCurrentTableAllTemplateName(zTableView* view);

    // The footer: the model's footer row (BaseDataItemModel::footerRow, the list's total)
    // shown in a strip under the rows that stays in place while the rows scroll; the row
    // itself is hidden from the scrolled rows.
    void setFooterEnabled(bool enabled);
    QTableView* footerView() const { return m_footer; }
    int footerRow() const { return m_footerRow; }

    // While rows are dragged: where they would land, and whether the list allows it there. An
    // allowed target shows a drop line at the row, a refused one the forbidden cursor.
    void setMoveTarget(int row, bool allowed);
    void clearMoveTarget();
    int moveTarget() const { return m_moveTarget; }
    bool moveAllowed() const { return m_moveAllowed; }

    // Saves the current layout as a user template (what the save panel does after asking).
    bool saveUserTemplate(const QString& name, QString* error);

    // Ctrl+C: the selected cells as tab-separated text, one line a row, in the shown columns
    // of the selection's bounding block (cells not selected are empty).
    QString selectionText() const;
    void copySelection();
    // Ctrl+V: a block of cells (tab-separated lines, as spreadsheets copy them) goes into the
    // grid from the selection's top-left cell, in the shown columns; one value goes into every
    // selected cell. Cells that cannot be edited and cells beyond the grid are left out. The
    // model takes the whole block as one change.
    void pasteText(const QString& text);
    // Splits clipboard text into rows of cells; a quoted cell may hold tabs, line breaks and
    // doubled quotes. A last empty line (the one a trailing line break leaves) is dropped.
    static QVector<QStringList> parseCellBlock(const QString& text);

signals:
    void headerConfigChanged();
    // A row dragged by its row header from one row to another; finished on release.
    void signalMouseMoveRows(int from, int to, bool finished);

protected:
    // Rows are dragged by their row header.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void updateGeometries() override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void syncFooter();
    void placeFooter();
    void pushColumnsToModel();
    bool loadTemplateFile(const QString& path, QString* error);
    QString templateDir() const;
    void rememberTemplate(const QString& name);
    HeaderConfig m_config;
    QString m_currentTemplate;
    int m_dragFrom = -1;
    int m_moveTarget = -1;
    QTableView* m_footer = nullptr;
    int m_footerRow = -1;
    bool m_moveAllowed = false;
};
