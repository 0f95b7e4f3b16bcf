#pragma once

#include <QString>

// The unit project's number formats (计价设置): how many decimals prices and totals show.
class JfszTable
{
public:
    int priceDecimals() const { return m_priceDecimals; }
    int totalDecimals() const { return m_totalDecimals; }
    int quantityDecimals() const { return m_quantityDecimals; }
    void setQuantityDecimals(int decimals) { m_quantityDecimals = decimals; }
    QString QuantityFloatFormatToStr(double value, int decimals) const
    {
        return QString::number(value, 'f', decimals < 0 ? m_quantityDecimals : decimals);
    }
    void setDecimals(int price, int total)
    {
        m_priceDecimals = price;
        m_totalDecimals = total;
    }
    // decimals < 0 takes the table's own setting.
    QString PriceFloatFormatToStr(double value, int decimals) const
    {
        return QString::number(value, 'f', decimals < 0 ? m_priceDecimals : decimals);
    }
    QString TotalFloatFormatToStr(double value, int decimals) const
    {
        return QString::number(value, 'f', decimals < 0 ? m_totalDecimals : decimals);
    }

private:
    int m_priceDecimals = 2;
    int m_totalDecimals = 2;
    int m_quantityDecimals = 2;
};
