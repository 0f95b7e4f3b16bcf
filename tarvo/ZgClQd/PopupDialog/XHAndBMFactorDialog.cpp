#include "XHAndBMFactorDialog.h"

#include "HostScreen.h"
#include "zMessageBox.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QVBoxLayout>

namespace {

bool fitsInt(const QString& digitsOnly)
{
    bool ok = false;
    digitsOnly.toInt(&ok, 10);
    return ok;
}

} // namespace

XHAndBMFactorDialog::XHAndBMFactorDialog(QWidget* parent)
    : QDialog(parent), m_sequence(new QGroupBox(QStringLiteral("序号"), this)),
      m_code(new QGroupBox(QStringLiteral("招标编码"), this)), m_prefix(new QLineEdit(this)),
      m_start(new QLineEdit(QStringLiteral("1"), this)),
      m_digits(new QLineEdit(QStringLiteral("3"), this))
{
    setObjectName(QStringLiteral("XHAndBMFactorDialog"));
    setWindowTitle(QStringLiteral("重新生成材料序号及招标编码"));
    const double ratio = HostScreen::ResolutionRatio();
    setMinimumWidth(qRound(320 * ratio));

    m_sequence->setCheckable(true);
    m_sequence->setChecked(true);
    auto* sequenceLayout = new QVBoxLayout(m_sequence);
    sequenceLayout->addWidget(new QLabel(QStringLiteral("按清单顺序重新生成序号"), m_sequence));

    m_code->setCheckable(true);
    m_code->setChecked(true);
    m_prefix->setText(QStringLiteral("ZG"));
    auto* codeLayout = new QFormLayout(m_code);
    codeLayout->addRow(QStringLiteral("编码前缀:"), m_prefix);
    codeLayout->addRow(QStringLiteral("开始序号:"), m_start);
    codeLayout->addRow(QStringLiteral("序号位数:"), m_digits);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    connect(buttons, &QDialogButtonBox::accepted, this, &XHAndBMFactorDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_sequence);
    layout->addWidget(m_code);
    layout->addWidget(buttons);
}

bool XHAndBMFactorDialog::sequenceChecked() const
{
    return m_sequence->isChecked();
}

bool XHAndBMFactorDialog::codeChecked() const
{
    return m_code->isChecked();
}

QString XHAndBMFactorDialog::prefix() const
{
    return m_prefix->text();
}

int XHAndBMFactorDialog::startNumber() const
{
    return m_start->text().toInt(nullptr, 10);
}

int XHAndBMFactorDialog::digits() const
{
    return m_digits->text().toInt(nullptr, 10);
}

QString XHAndBMFactorDialog::Validate(const QString& prefix, const QString& start,
                                      const QString& digits)
{
    static const QRegularExpression prefixPattern(QStringLiteral("^[A-Za-z0-9@_]+$"));
    static const QRegularExpression integer(QStringLiteral("^\\d+$"));
    if (!prefix.isEmpty() && !prefixPattern.match(prefix).hasMatch())
        return QStringLiteral("前缀只能是大写字母、小写字母、数字、@符号、_符号的组合!");
    if (start.isEmpty())
        return QStringLiteral("开始序号不能为空!");
    // A number too large for the list's counter is no usable integer either.
    if (!integer.match(start).hasMatch() || !fitsInt(start))
        return QStringLiteral("开始序号不是整数!");
    if (digits.isEmpty())
        return QStringLiteral("序号位数不能为空!");
    if (!integer.match(digits).hasMatch() || !fitsInt(digits))
        return QStringLiteral("序号位数不是整数!");
    return QString();
}

void XHAndBMFactorDialog::accept()
{
    if (m_code->isChecked()) {
        const QString refusal = Validate(m_prefix->text(), m_start->text(), m_digits->text());
        if (!refusal.isEmpty()) {
            showInformation(this, QStringLiteral("提示"), refusal);
            return; // the dialog stays open
        }
    }
    QDialog::accept();
}
