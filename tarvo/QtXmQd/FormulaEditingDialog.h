#pragma once

#include <QDialog>

class ProTreeNode;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class zBaseMenu;

// "计算公式编辑": writes the amount formula of a calculation row over the project's fee
// variables, checks it, and carries the quota measurement fee rate and the tax rate.
class FormulaEditingDialog : public QDialog
{
    Q_OBJECT
public:
    FormulaEditingDialog(QWidget* parent, bool isVAT);

    void LoadRates(ProTreeNode* node);
    void SetFormula(const QString& formula);
    // The other items row the formula is for: a formula that would depend on the row's own
    // amount (a cycle through fee variables) is refused.
    void SetRow(int row) { m_row = row; }
    // "计算结果：…" after "测试": what the formula comes to in the unit project.
    QString resultText() const;
    QString GetFormula() const;
    // The quota measurement fee rate and the tax rate as fractions (empty is 0).
    double GetDeCdFl() const;
    double GetSjFl() const;
    // The tax rate as text with its unit ("3.41%"), empty when empty.
    QString GetSjFlText() const;

    // The positions (1-based, in the host's fee-variable list) of the two menus' items.
    static const QList<int>& ProjectVariablePositions();
    static const QList<int>& OtherVariablePositions();

    zBaseMenu* projectVariableMenu() const { return m_projectMenu; }
    zBaseMenu* otherVariableMenu() const { return m_otherMenu; }
    QPlainTextEdit* formulaEdit() const { return m_formula; }
    QLineEdit* deCdFlEdit() const { return m_deCdFl; }
    QComboBox* deCdFlUnit() const { return m_deCdFlUnit; }
    QLineEdit* sjFlEdit() const { return m_sjFl; }
    QComboBox* sjFlUnit() const { return m_sjFlUnit; }

public slots:
    void slotExtractRates();
    void slotTest();
    void slotAccept();

private:
    void buildMenus();
    void insertText(const QString& text);
    bool checkFormula();
    static double fraction(const QLineEdit* edit, const QComboBox* unit);

    bool m_isVAT;
    ProTreeNode* m_node = nullptr;
    int m_row = -1;
    QLabel* m_result = nullptr;
    QPlainTextEdit* m_formula;
    zBaseMenu* m_projectMenu;
    zBaseMenu* m_otherMenu;
    QLineEdit* m_deCdFl;
    QComboBox* m_deCdFlUnit;
    QLineEdit* m_sjFl;
    QComboBox* m_sjFlUnit;
};
