#include "GzipInputDevice.h"

GzipInputDevice::GzipInputDevice(QIODevice* source, qint64 maxOutput)
    : m_source(source), m_maxOutput(maxOutput)
{
    m_input.resize(64 * 1024);
}

GzipInputDevice::~GzipInputDevice()
{
    close();
}

bool GzipInputDevice::open(OpenMode mode)
{
    if ((mode & WriteOnly) || !m_source || !m_source->isReadable())
        return false;
    m_stream = z_stream{};
    // 16 + MAX_WBITS: gzip framing only; several members one after another are accepted.
    if (inflateInit2(&m_stream, 16 + MAX_WBITS) != Z_OK)
        return false;
    m_initialised = true;
    m_finished = false;
    m_produced = 0;
    m_limitExceeded = false;
    m_problem.clear();
    return QIODevice::open(mode);
}

void GzipInputDevice::close()
{
    if (m_initialised) {
        inflateEnd(&m_stream);
        m_initialised = false;
    }
    if (isOpen())
        QIODevice::close();
}

bool GzipInputDevice::reset()
{
    if (!isOpen() || !m_source->reset())
        return false;
    const OpenMode mode = openMode();
    close();
    return open(mode);
}

bool GzipInputDevice::atEnd() const
{
    return m_finished && QIODevice::atEnd();
}

qint64 GzipInputDevice::readData(char* data, qint64 maxSize)
{
    if (m_finished || !m_initialised)
        return -1;
    qint64 total = 0;
    while (total < maxSize) {
        if (m_stream.avail_in == 0) {
            const qint64 got = m_source->read(m_input.data(), m_input.size());
            if (got < 0) {
                m_problem = QStringLiteral("文件读取失败");
                m_finished = true;
                break;
            }
            if (got == 0) {
                // The compressed stream ended without its trailer.
                m_problem = QStringLiteral("压缩数据不完整");
                m_finished = true;
                break;
            }
            m_stream.next_in = reinterpret_cast<Bytef*>(m_input.data());
            m_stream.avail_in = uInt(got);
        }
        const qint64 room = qMin<qint64>(maxSize - total, 1 << 20);
        m_stream.next_out = reinterpret_cast<Bytef*>(data + total);
        m_stream.avail_out = uInt(room);
        const int rc = inflate(&m_stream, Z_NO_FLUSH);
        const qint64 produced = room - m_stream.avail_out;
        total += produced;
        m_produced += produced;
        if (m_produced > m_maxOutput) {
            m_problem = QStringLiteral("解压后的内容超过%1 MB的上限").arg(m_maxOutput >> 20);
            m_limitExceeded = true;
            m_finished = true;
            return -1;
        }
        if (rc == Z_STREAM_END) {
            // Another gzip member may follow; anything else ends the stream.
            if (m_stream.avail_in == 0 && m_source->atEnd()) {
                m_finished = true;
                break;
            }
            inflateReset(&m_stream);
            continue;
        }
        if (rc != Z_OK && rc != Z_BUF_ERROR) {
            m_problem = QStringLiteral("压缩数据已损坏");
            m_finished = true;
            return -1;
        }
        if (produced > 0 && m_stream.avail_out != 0)
            break; // give the reader what there is
    }
    if (total == 0 && m_finished)
        return -1;
    return total;
}
