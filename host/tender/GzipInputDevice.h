#pragma once

#include <QIODevice>

#include <zlib.h>

// A read-only, sequential device that inflates gzip data from another device as it is read.
// It stops with an error once more than a limit of bytes would come out, so a small
// compressed file cannot blow up into gigabytes.
class GzipInputDevice : public QIODevice
{
public:
    GzipInputDevice(QIODevice* source, qint64 maxOutput);
    ~GzipInputDevice() override;

    bool open(OpenMode mode) override;
    void close() override;
    bool isSequential() const override { return true; }
    bool atEnd() const override;
    // Starts inflating again from the start of the source, which must be able to seek.
    bool reset() override;

    // Why reading stopped early: corrupt data, too much output; empty when it did not.
    QString problem() const { return m_problem; }
    bool limitExceeded() const { return m_limitExceeded; }

    static bool isGzip(const QByteArray& head)
    {
        return head.size() >= 2 && quint8(head[0]) == 0x1f && quint8(head[1]) == 0x8b;
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice* m_source;
    qint64 m_maxOutput;
    qint64 m_produced = 0;
    z_stream m_stream{};
    bool m_initialised = false;
    bool m_finished = false;
    bool m_limitExceeded = false;
    QString m_problem;
    QByteArray m_input;
};
