#include "ProjectPropertiesDialog.h"

#include "ProjectRegion.h"
#include "ProjectWorks.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

ProjectPropertiesDialog::ProjectPropertiesDialog(ProjectWorks* project, QWidget* parent)
    : QDialog(parent), m_project(project), m_region(new QLineEdit(this))
{
    setObjectName(QStringLiteral("ProjectPropertiesDialog"));
    setWindowTitle(QStringLiteral("工程属性"));
    auto* form = new QFormLayout(this);
    auto* name = new QLabel(project ? project->name() : QString(), this);
    name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(QStringLiteral("工程名称："), name);
    m_region->setObjectName(QStringLiteral("regionEdit"));
    m_region->setMaxLength(ProjectRegion::MaxLength);
    m_region->setPlaceholderText(QStringLiteral("例如：成都市区"));
    m_region->setText(ProjectRegion::Of(project));
    m_region->setMinimumWidth(260);
    form->addRow(QStringLiteral("工程所在地区："), m_region);
    auto* hint = new QLabel(
        QStringLiteral("零星工作项目人工单价查询默认选用此地区（未曾选择过地区时）。"), this);
    hint->setStyleSheet(QStringLiteral("QLabel { color: #6b7785; }"));
    form->addRow(hint);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("确定"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("取消"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

bool ProjectPropertiesDialog::apply()
{
    const QString region = m_region->text().trimmed();
    if (!m_project || region == ProjectRegion::Of(m_project))
        return false;
    return ProjectRegion::Set(m_project, region);
}
