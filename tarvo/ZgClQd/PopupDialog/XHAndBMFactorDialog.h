#pragma once

#include <QDialog>

class QGroupBox;
class QLineEdit;

// "重新生成材料序号及招标编码": whether to renumber the list and whether (and how) to
// regenerate its tender codes. The dialog accepts only input it can number with.
class XHAndBMFactorDialog : public QDialog
{
    Q_OBJECT
public:
    explicit XHAndBMFactorDialog(QWidget* parent = nullptr);

    bool sequenceChecked() const;
    bool codeChecked() const;
    QString prefix() const;
    int startNumber() const;
    int digits() const;

    QGroupBox* sequenceGroup() const { return m_sequence; }
    QGroupBox* codeGroup() const { return m_code; }
    QLineEdit* prefixEdit() const { return m_prefix; }
    QLineEdit* startEdit() const { return m_start; }
    QLineEdit* digitsEdit() const { return m_digits; }

    // The refusal of the code fields in the order they are checked, or an empty text.
    static QString Validate(const QString& prefix, const QString& start, const QString& digits);

public slots:
    void accept() override;

private:
    QGroupBox* m_sequence;
    QGroupBox* m_code;
    QLineEdit* m_prefix;
    QLineEdit* m_start;
    QLineEdit* m_digits;
};
