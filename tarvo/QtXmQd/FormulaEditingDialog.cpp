#include "FormulaEditingDialog.h"

#include "HostScreen.h"
#include "TarvoGuard.h"

#include "ConstructionWorks.h"
#include "DataManagement.h"
#include "FyBlBusiness.h"
#include "QtXmQdJJjbBusiness.h"
#include "SharedInterface.h"
#include "VXParseAlg.h"
#include "XmBjHzbBusiness.h"
#include "XtBlBusiness.h"
#include "zBaseLineEdit.h"
#include "zBaseMenu.h"
#include "zMessageBox.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace {

QList<int> range(int from, int to)
{
    QList<int> list;
    for (int p = from; p <= to; ++p)
        list << p;
    return list;
}

// A rate text with its sign: "%" gives unit 0, "‰" unit 1; the sign is taken off.
bool splitRate(const QString& text, QString& number, int& unit)
{
    if (text.contains(QLatin1Char('%'))) {
        number = QString(text).remove(QLatin1Char('%'));
        unit = 0;
        return true;
    }
    if (text.contains(QChar(0x2030))) {
        number = QString(text).remove(QChar(0x2030));
        unit = 1;
        return true;
    }
    return false;
}

} // namespace

const QList<int>& FormulaEditingDialog::ProjectVariablePositions()
{
    static const QList<int> positions =
        QList<int>{161, 208, 164, 165, 204, 205} + range(29, 40) + range(43, 55) +
        QList<int>{169, 179, 202, 181, 114, 115, 200, 111, 116, 117};
    return positions;
}

const QList<int>& FormulaEditingDialog::OtherVariablePositions()
{
    static const QList<int> positions =
        QList<int>{187, 188, 60, 189, 190, 62} + range(191, 194) + QList<int>{65, 118} +
        range(195, 199) + range(119, 126) + QList<int>{128, 209, 206, 207, 130, 131} +
        range(110, 113) + QList<int>{94, 95, 185} + range(96, 101) +
        QList<int>{107, 109, 186, 103, 201, 105, 137, 139, 140, 143, 144, 145};
    return positions;
}

FormulaEditingDialog::FormulaEditingDialog(QWidget* parent, bool isVAT)
    : QDialog(parent), m_isVAT(isVAT), m_formula(new QPlainTextEdit(this)),
      m_projectMenu(new zBaseMenu(QString(), this)), m_otherMenu(new zBaseMenu(QString(), this)),
      m_deCdFl(new zBaseLineEdit(this)), m_deCdFlUnit(new QComboBox(this)),
      m_sjFl(new zBaseLineEdit(this)), m_sjFlUnit(new QComboBox(this))
{
    setObjectName(QStringLiteral("FormulaEditingDialog"));
    setWindowTitle(QStringLiteral("计算公式编辑"));
    auto* layout = new QVBoxLayout(this);

    auto* tools = new QHBoxLayout;
    for (const auto& [text, menu] : {std::pair{QStringLiteral("工程数据变量"), m_projectMenu},
                                     std::pair{QStringLiteral("其他数据变量"), m_otherMenu}}) {
        auto* button = new QToolButton(this);
        button->setText(text);
        button->setMenu(menu);
        button->setPopupMode(QToolButton::InstantPopup);
        tools->addWidget(button);
    }
    tools->addStretch();
    for (const QString& op : {QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("*"),
                              QStringLiteral("/"), QStringLiteral("("), QStringLiteral(")")}) {
        auto* button = new zBaseButton(op, this);
        button->setFixedWidth(32);
        connect(button, &QPushButton::clicked, this, [this, button] {
            TARVO_GUARD("QtXmQd\\FormulaEditingDialog", "FormulaEditingDialog::insertText")
            {
                insertText(button->text());
            };
        });
        tools->addWidget(button);
    }
    layout->addLayout(tools);
    m_formula->setObjectName(QStringLiteral("formulaEdit"));
    m_formula->setMinimumHeight(HostScreen::Scaled(110));
    layout->addWidget(m_formula);

    auto* rates = new QGridLayout;
    for (QComboBox* unit : {m_deCdFlUnit, m_sjFlUnit})
        unit->addItems({QStringLiteral("%"), QString(QChar(0x2030))});
    rates->addWidget(new QLabel(QStringLiteral("工程定额测定费费率"), this), 0, 0);
    rates->addWidget(m_deCdFl, 0, 1);
    rates->addWidget(m_deCdFlUnit, 0, 2);
    rates->addWidget(new QLabel(QStringLiteral("税金规定费率"), this), 1, 0);
    rates->addWidget(m_sjFl, 1, 1);
    rates->addWidget(m_sjFlUnit, 1, 2);
    layout->addLayout(rates);

    auto* note = new QLabel(this);
    note->setObjectName(QStringLiteral("说明"));
    note->setWordWrap(true);
    note->setText(
        m_isVAT ? QStringLiteral(
                      "说明：公式可引用工程数据变量与其他数据变量，本工程按一般计税方法计税。")
                : QStringLiteral(
                      "说明：公式可引用工程数据变量与其他数据变量，本工程按简易计税方法计税。"));
    layout->addWidget(note);
    m_result = new QLabel(this);
    m_result->setObjectName(QStringLiteral("result"));
    layout->addWidget(m_result);

    auto* buttons = new QHBoxLayout;
    const struct
    {
        QString text;
        void (FormulaEditingDialog::*slot)();
    } actions[] = {{QStringLiteral("提取费率"), &FormulaEditingDialog::slotExtractRates},
                   {QStringLiteral("测试"), &FormulaEditingDialog::slotTest},
                   {QStringLiteral("确定"), &FormulaEditingDialog::slotAccept},
                   {QStringLiteral("取消"), &QDialog::reject}};
    buttons->addStretch();
    for (const auto& action : actions) {
        auto* button = new zBaseButton(action.text, this);
        connect(button, &QPushButton::clicked, this, action.slot);
        buttons->addWidget(button);
    }
    layout->addLayout(buttons);
    resize(HostScreen::Scaled(QSize(560, 360)));
    buildMenus();
}

void FormulaEditingDialog::buildMenus()
{
    // A name that the unit project cannot give a value to is not offered.
    QStringList names = FyBlBusiness::FeeVariableNames(SharedInterface::GetAppPath());
    for (QString& name : names)
        if (!FyBlBusiness::IsDefined(name))
            name.clear();
    auto addItem = [this](QMenu* menu, const QString& text) {
        QAction* action = menu->addAction(text);
        connect(action, &QAction::triggered, this, [this, menu, text] {
            TARVO_GUARD("QtXmQd\\FormulaEditingDialog", "FormulaEditingDialog::insertText")
            {
                // A group item stands for its full name: the group's title in front.
                auto* base = qobject_cast<zBaseMenu*>(menu);
                insertText((base ? base->title() : QString()) + text);
            };
        });
    };
    for (int position : ProjectVariablePositions())
        if (position >= 1 && position <= names.size() && !names.at(position - 1).isEmpty())
            addItem(m_projectMenu, names.at(position - 1));

    const QStringList groups = {QStringLiteral("分部分项"), QStringLiteral("措施项目"),
                                QStringLiteral("其他项目"), QStringLiteral("签证索赔项目")};
    QList<zBaseMenu*> groupMenus;
    for (const QString& group : groups) {
        auto* menu = new zBaseMenu(group, m_otherMenu);
        m_otherMenu->addMenu(menu);
        groupMenus << menu;
    }
    static const QRegularExpression feeBase(QStringLiteral("取费基数$"));
    for (const QString& name : names) {
        if (name.isEmpty())
            continue;
        for (int g = 0; g < groups.size(); ++g) {
            if (!name.startsWith(groups.at(g)))
                continue;
            if (!feeBase.match(name).hasMatch())
                addItem(groupMenus.at(g), name.mid(groups.at(g).size()));
            break;
        }
    }
    m_otherMenu->addSeparator();
    for (int position : OtherVariablePositions())
        if (position >= 1 && position <= names.size() && !names.at(position - 1).isEmpty())
            addItem(m_otherMenu, names.at(position - 1));
}

void FormulaEditingDialog::insertText(const QString& text)
{
    m_formula->textCursor().insertText(text);
    m_formula->setFocus();
}

void FormulaEditingDialog::LoadRates(ProTreeNode* node)
{
    m_node = node;
    QString number;
    int unit = 0;
    const QString tax = XtBlBusiness::GetSJXtBlValue(node, 10).toString();
    if (splitRate(tax, number, unit)) {
        m_sjFlUnit->setCurrentIndex(unit);
        m_sjFl->setText(number);
    } else {
        m_sjFl->setText(tax);
    }
    const double quota =
        FyBlBusiness::GetInstance()->GetSJFyBlValue(node, FyBlBusiness::QuotaFeeRateId);
    static const QRegularExpression zeros(QStringLiteral("0+$"));
    static const QRegularExpression point(QStringLiteral("\\.$"));
    m_deCdFlUnit->setCurrentIndex(0);
    m_deCdFl->setText(QString::number(quota * 100, 'f', 2).remove(zeros).remove(point));
}

void FormulaEditingDialog::slotExtractRates()
{
    TARVO_GUARD("QtXmQd\\FormulaEditingDialog", "FormulaEditingDialog::slotExtractRates")
    {
        if (!m_node)
            return;
        const int project = ProTreeNode::ProjectIndex(m_node);
        const int audit = ProTreeNode::AuditVersion(m_node);
        const int id = ProTreeNode::Id(m_node);
        QString text;
        QString number;
        int unit = 0;
        if (XmBjHzbBusiness::GetDeCdFl(project, audit, id, text)) {
            // A text without a sign changes nothing here...
            if (splitRate(text, number, unit)) {
                m_deCdFlUnit->setCurrentIndex(unit);
                m_deCdFl->setText(number);
            }
        } else {
            showInformation(this, QStringLiteral("提示"),
                            QStringLiteral("没有找到工程定额测定费费率定义数据"));
        }
        if (XmBjHzbBusiness::GetSjFl(project, audit, id, text)) {
            // ...and is taken as it stands here.
            if (splitRate(text, number, unit)) {
                m_sjFlUnit->setCurrentIndex(unit);
                m_sjFl->setText(number);
            } else {
                m_sjFl->setText(text);
            }
        }
    };
}

bool FormulaEditingDialog::checkFormula()
{
    const QString formula = SharedInterface::ReplaceFormulaItem(m_formula->toPlainText());
    m_formula->setPlainText(formula);
    m_result->clear();
    // Only names that have a value: the defined fee variables and those the unit project holds.
    ConstructionWorks* works = DataManagement::getInstance()->GetContructWorks(m_node);
    QStringList names;
    for (const FyBlBusiness::Definition& d : FyBlBusiness::Definitions())
        names << d.name;
    names += FyBlBusiness::GetInstance()->variables(works).keys();
    QString error;
    if (!VXParseAlg::getInstance()->CheckExpressionEx(formula, names, error)) {
        showCritical(this, QStringLiteral("错误"), QStringLiteral("计算公式中存在非法变量。"));
        return false;
    }
    const QString cycle = QtXmQdJJjbBusiness::CheckFormulaCycle(works, m_row, formula);
    if (!cycle.isEmpty()) {
        showCritical(this, QStringLiteral("错误"), cycle);
        return false;
    }
    return true;
}

QString FormulaEditingDialog::resultText() const
{
    return m_result->text();
}

void FormulaEditingDialog::slotTest()
{
    TARVO_GUARD("QtXmQd\\FormulaEditingDialog", "FormulaEditingDialog::slotTest")
    {
        if (!checkFormula())
            return;
        ConstructionWorks* works = DataManagement::getInstance()->GetContructWorks(m_node);
        double value = 0;
        QString error;
        if (works && VXParseAlg::getInstance()->ExpCalc(
                         m_formula->toPlainText(), FyBlBusiness::GetInstance()->variables(works),
                         value, error))
            m_result->setText(QStringLiteral("计算结果：%1")
                                  .arg(works->getJfszTable()->TotalFloatFormatToStr(
                                      std::round(value * 100) / 100, -1)));
        showInformation(this, QStringLiteral("提示"), QStringLiteral("计算公式正确！"));
    };
}

void FormulaEditingDialog::slotAccept()
{
    TARVO_GUARD("QtXmQd\\FormulaEditingDialog", "FormulaEditingDialog::slotAccept")
    {
        if (checkFormula())
            accept();
    };
}

void FormulaEditingDialog::SetFormula(const QString& formula)
{
    m_formula->setPlainText(formula);
}

QString FormulaEditingDialog::GetFormula() const
{
    return m_formula->toPlainText();
}

double FormulaEditingDialog::fraction(const QLineEdit* edit, const QComboBox* unit)
{
    const QString text = edit->text().trimmed();
    if (text.isEmpty())
        return 0;
    return text.toDouble() / (unit->currentText() == QString(QChar(0x2030)) ? 1000.0 : 100.0);
}

double FormulaEditingDialog::GetDeCdFl() const
{
    return fraction(m_deCdFl, m_deCdFlUnit);
}

double FormulaEditingDialog::GetSjFl() const
{
    return fraction(m_sjFl, m_sjFlUnit);
}

QString FormulaEditingDialog::GetSjFlText() const
{
    const QString text = m_sjFl->text().trimmed();
    return text.isEmpty() ? QString() : text + m_sjFlUnit->currentText();
}
