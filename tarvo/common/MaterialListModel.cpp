#include "MaterialListModel.h"
#include "HostScreen.h"

#include "BaseDataItem.h"
#include "ProjectSettingHelper.h"
#include "SkinManager.h"

#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QSize>

#include <cmath>

MaterialListModel::MaterialListModel(QObject* parent) : BillModel(parent) {}

bool MaterialListModel::isNumericField(int field)
{
    return field == 6 || field == 7 || field == 9 || field == 10;
}

int MaterialListModel::footerRow() const
{
    const int last = rowCount() - 1;
    const BaseDataItem* item = last >= 0 ? itemAt(last) : nullptr;
    return item && isFixedRow(item) ? last : -1;
}

BillModel::NumberKind MaterialListModel::numberKind(int field) const
{
    switch (field) {
    case 6:
    case 7:
        return NumberKind::Price;
    case 9:
        return NumberKind::Quantity;
    case 10:
        return NumberKind::Amount;
    default:
        return NumberKind::None;
    }
}

bool MaterialListModel::isFixedRow(const BaseDataItem* item) const
{
    return item->getKind() == 2;
}

QByteArray MaterialListModel::questionMarkImage()
{
    // Read once and kept for the life of the process.
    static const QByteArray bytes = [] {
        QFile file(QStringLiteral(":/Image/svg/WenHao.svg"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    return bytes;
}

QVariant MaterialListModel::data(const QModelIndex& index, int role) const
{
    const BaseDataItem* item = index.isValid() ? itemAt(index.row()) : nullptr;
    if (!item)
        return QVariant();
    const int field = fieldOfColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (isNumericField(field)) {
            // The text hides float noise (15 digits); a zero shows blank; the amount shows
            // two decimals of that text's value (0.00 when it has none). Read once per cell.
            const QString text = item->getValueStr(field);
            bool ok = false;
            const double value = text.toDouble(&ok);
            if (ok && std::fabs(value) < 1e-6)
                return QString();
            return role == Qt::DisplayRole && ok ? numberText(value, numberKind(field)) : text;
        }
        return item->getValueStr(field);
    case Qt::FontRole: {
        static const QFont font(QStringLiteral("SimSun"), 9);
        return font;
    }
    case Qt::TextAlignmentRole:
        switch (field) {
        case 1:
        case 5:
            return AlignCentre;
        case 3:
            return item->getKind() == 2 ? AlignCentre : AlignLeftCentre;
        default:
            // Numbers read from the right, codes and text from the left.
            return isNumericField(field) ? AlignRightCentre : AlignLeftCentre;
        }
    case Qt::ForegroundRole: {
        if (QVariant focused = focusedRowText(index.row()); focused.isValid())
            return focused;
        if (item->IsBlock())
            return SkinManager::getInstance()->getVXColor(
                QStringLiteral("Jjb_TextColor_Kx"),
                ProjectSettingHelper::GetProjectSettingHelper()->getItemColor(24));
        const QColor color = cellTextColor(index.row(), field);
        return color.isValid() ? QVariant(color) : QVariant();
    }
    case Qt::BackgroundRole: {
        if (item->IsBlock())
            return SkinManager::getInstance()->getVXColor(
                QStringLiteral("Jjb_BackgroundColor_Kx"),
                ProjectSettingHelper::GetProjectSettingHelper()->getItemColor(25));
        const QColor color = cellBackgroundColor(index.row(), field);
        return color.isValid() ? QVariant(color) : BillModel::data(index, role);
    }
    case Qt::SizeHintRole:
        return item->getRowHeight() > 0 ? QVariant(QSize(-1, item->getRowHeight())) : QVariant();
    default:
        return BillModel::data(index, role);
    }
}

QVariant MaterialListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical && role >= IconShownRole && role <= IconAlignRole) {
        const BaseDataItem* item = itemAt(section);
        if (!item || !item->getValue(QuestionMarkField).toBool())
            return QVariant();
        switch (role) {
        case IconShownRole:
            return 1;
        case IconImageRole:
            return questionMarkImage();
        case IconSizeRole:
            return HostScreen::Scaled(QSize(16, 16));
        default:
            return AlignCentre;
        }
    }
    return BillModel::headerData(section, orientation, role);
}

bool MaterialListModel::checkEdit(int row, int field, QVariant& value)
{
    Q_UNUSED(row)
    return field == 7 || field == 9 ? evaluateNumeric(value) : true;
}
