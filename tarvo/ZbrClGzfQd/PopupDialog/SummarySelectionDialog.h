#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// "选择": which materials to summarise or refresh. The first choice gives 0, the second 1,
// cancelling -1.
class SummarySelectionDialog : public QDialog
{
    Q_OBJECT
public:
    explicit SummarySelectionDialog(QWidget* parent = nullptr);

    void setTexts(const QString& label, const QString& first, const QString& second);
    int choice() const { return m_choice; }
    void choose(int choice);
    QPushButton* choiceButton(int index) const { return index == 0 ? m_first : m_second; }

private:
    QLabel* m_label;
    QPushButton* m_first;
    QPushButton* m_second;
    int m_choice = -1;
};
