#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

// What every fuzz target shares (each includes this once): one application object, made
// before the first input (the SQL drivers and codecs want one), and a scratch folder where an
// input is written for the readers that take a path.
extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static int argc = 1;
    static char name[] = "tarvo-fuzz";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    return 0;
}

namespace FuzzInput {

// Writes the input to a file of this name in the scratch folder and returns its path (empty
// when the file cannot be written).
inline QString writeFile(const QString& name, const uint8_t* data, size_t size)
{
    static QTemporaryDir dir;
    const QString path = dir.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return {};
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    return path;
}

inline QByteArray bytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), int(size));
}

} // namespace FuzzInput
