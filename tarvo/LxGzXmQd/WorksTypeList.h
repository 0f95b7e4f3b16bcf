#pragma once

#include <QStringList>

// The trade list file (one trade a line, GBK, "\r\n"): read with every blank removed.
class WorksTypeList
{
public:
    static QString FilePath();
    static QStringList Read();
    // Replaces the file with the list, in order.
    static bool Write(const QStringList& trades);
    // Appends one trade (the trade editor's new entries).
    static bool Append(const QString& trade);
    // The list every trade editor shares, read once.
    static QStringList& Shared();
};
