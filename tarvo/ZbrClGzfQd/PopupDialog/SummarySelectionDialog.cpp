#include "SummarySelectionDialog.h"

#include "TarvoGuard.h"

#include "HostScreen.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

SummarySelectionDialog::SummarySelectionDialog(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), m_label(new QLabel(this)),
      m_first(new QPushButton(this)), m_second(new QPushButton(this))
{
    setObjectName(QStringLiteral("SummarySelectionDialog"));
    setWindowTitle(QStringLiteral("选择"));
    const double ratio = HostScreen::ResolutionRatio();
    setFixedSize(qRound(280 * ratio), qRound(220 * ratio));
    setStyleSheet(QStringLiteral(
        "SummarySelectionDialog { background: #ffffff; border: 1px solid #9fb3c8; }"));
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(QStringLiteral("选择"), this);
    title->setStyleSheet(QStringLiteral("font-weight: bold;"));
    layout->addWidget(title);
    layout->addWidget(m_label);
    auto* cancel = new QPushButton(QStringLiteral("取     消"), this);
    for (QPushButton* button : {m_first, m_second, cancel}) {
        button->setMinimumWidth(qRound(200 * ratio));
        layout->addWidget(button, 0, Qt::AlignHCenter);
    }
    connect(m_first, &QPushButton::clicked, this, [this] { choose(0); });
    connect(m_second, &QPushButton::clicked, this, [this] { choose(1); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void SummarySelectionDialog::setTexts(const QString& label, const QString& first,
                                      const QString& second)
{
    m_label->setText(label);
    m_first->setText(first);
    m_second->setText(second);
}

void SummarySelectionDialog::choose(int choice)
{
    TARVO_GUARD("ZbrClGzfQd\\PopupDialog\\SummarySelectionDialog", "SummarySelectionDialog::choose")
    {
        m_choice = choice;
        accept();
    };
}
