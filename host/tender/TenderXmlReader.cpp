#include "TenderXmlReader.h"

#include "TenderDocument.h"
#include "TenderXmlFastReader.h"

#include <QSet>
#include <QXmlStreamReader>

#include <cmath>

namespace {

QString L(const char* text)
{
    return QString::fromUtf8(text);
}

// One pass over the document. Every failure keeps the first problem and stops.
class Parser
{
public:
    Parser(QIODevice* device, TenderDocument* document) : m_device(device), m_doc(document)
    {
        // The format uses no namespaces: resolving them would only cost time per element.
        m_x.setNamespaceProcessing(false);
    }

    bool run()
    {
        if (!findRoot())
            return false;
        if (m_x.name() != QLatin1String("TenderFile"))
            return failHere(L("根元素为“%1”，不是招标数据文件的TenderFile").arg(m_x.name()));
        const QXmlStreamAttributes a = m_x.attributes();
        const QString version = a.value(QLatin1String("version")).toString();
        if (version != TenderDocument::CurrentVersion)
            return failHere(L("标准版本“%1”无法识别，本程序读取版本%2")
                                .arg(version, TenderDocument::CurrentVersion));
        m_doc->version = version;
        m_doc->kind = a.value(QLatin1String("kind")).toString();
        if (m_doc->kind != TenderDocument::KindTender &&
            m_doc->kind != TenderDocument::KindCompletion &&
            m_doc->kind != TenderDocument::KindFiling)
            return failHere(L("文件类别“%1”无法识别").arg(m_doc->kind));

        bool header = false, project = false;
        while (child()) {
            if (m_x.name() == QLatin1String("Header") && !header) {
                header = true;
                if (!readHeader())
                    return false;
            } else if (m_x.name() == QLatin1String("Project") && !project) {
                project = true;
                if (!readProject())
                    return false;
            } else {
                return unexpected();
            }
        }
        if (!ok())
            return false;
        // Nothing but comments may follow the root.
        for (;;) {
            const QXmlStreamReader::TokenType t = next();
            if (t == QXmlStreamReader::EndDocument)
                break;
            if (t == QXmlStreamReader::Invalid) {
                if (m_eof && m_problem.isEmpty() &&
                    m_x.error() == QXmlStreamReader::PrematureEndOfDocumentError)
                    break;
                return false;
            }
            if (t == QXmlStreamReader::StartElement || t == QXmlStreamReader::DTD)
                return unexpected();
        }
        if (!header)
            return fail(L("缺少文件头（Header）"));
        if (!project)
            return fail(L("缺少工程（Project）"));
        return true;
    }

    QString problem() const
    {
        if (!m_problem.isEmpty())
            return m_problem;
        if (m_x.error() == QXmlStreamReader::PrematureEndOfDocumentError)
            return L("文件不完整（内容在第%1行处中断）").arg(m_x.lineNumber());
        if (m_x.hasError())
            return L("XML格式错误（第%1行第%2列：%3）")
                .arg(m_x.lineNumber())
                .arg(m_x.columnNumber())
                .arg(m_x.errorString());
        return QString();
    }

private:
    bool ok() const { return m_problem.isEmpty() && !m_x.hasError(); }
    bool fail(const QString& text)
    {
        if (m_problem.isEmpty())
            m_problem = text;
        return false;
    }
    bool failHere(const QString& text)
    {
        return fail(L("第%1行：%2").arg(m_x.lineNumber()).arg(text));
    }
    bool unexpected()
    {
        if (m_x.tokenType() == QXmlStreamReader::DTD)
            return refuseDtd();
        return failHere(L("不应出现元素“%1”").arg(m_x.name()));
    }
    bool refuseDtd()
    {
        // Entities are where XML bombs and external references hide: our files have none.
        return failHere(L("文件含有文档类型声明（DTD），本系统的招标数据文件不允许使用"));
    }

    // The next token, fed to the parser in chunks. A token that needs more than a bounded
    // amount of input (a giant attribute or text) is refused before it is held in memory.
    QXmlStreamReader::TokenType next()
    {
        for (;;) {
            const QXmlStreamReader::TokenType t = m_x.readNext();
            if (t != QXmlStreamReader::Invalid ||
                m_x.error() != QXmlStreamReader::PrematureEndOfDocumentError || m_eof) {
                m_pending = 0;
                return t;
            }
            const QByteArray chunk = m_device->read(64 * 1024);
            if (chunk.isEmpty()) {
                m_eof = true;
                return QXmlStreamReader::Invalid;
            }
            m_pending += chunk.size();
            if (m_pending > MaxTokenBytes) {
                failHere(L("单个元素或文字超过%1 MB").arg(MaxTokenBytes >> 20));
                return QXmlStreamReader::Invalid;
            }
            m_x.addData(chunk);
        }
    }

    bool findRoot()
    {
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::DTD:
                return refuseDtd();
            case QXmlStreamReader::Invalid:
                return false;
            case QXmlStreamReader::EndDocument:
                return fail(L("文件中没有任何元素"));
            default:
                break;
            }
        }
    }

    // Moves to the next child element of the current one; false at its end or on a failure.
    bool child()
    {
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::EndElement:
                return false;
            case QXmlStreamReader::Characters:
                if (!m_x.isWhitespace())
                    return failHere(L("元素中不应有文字“%1”").arg(m_x.text().left(20)));
                break;
            case QXmlStreamReader::DTD:
                return refuseDtd();
            case QXmlStreamReader::EntityReference:
                return failHere(L("不应使用实体“%1”").arg(m_x.name()));
            case QXmlStreamReader::Invalid:
            case QXmlStreamReader::EndDocument:
                return false;
            default:
                break;
            }
        }
    }

    // An element that must have no children.
    bool leaf()
    {
        if (child())
            return unexpected();
        return ok();
    }

    bool text(const QXmlStreamAttributes& a, const char* name, QString* out)
    {
        return textValue(a.value(QLatin1String(name)), QLatin1String(name), out);
    }

    bool textValue(const QStringRef& value, QLatin1String name, QString* out)
    {
        if (value.size() > TenderXmlReader::MaxTextLength)
            return failHere(
                L("属性%1的内容超过%2个字符").arg(name).arg(TenderXmlReader::MaxTextLength));
        *out = intern(value);
        return true;
    }

    // One shared copy per distinct text: a tender repeats its names, models, units, origins
    // and codes from unit project to unit project, and a copy each would cost an allocation
    // and its memory every time. The table is bounded, so a file of nothing but distinct
    // texts costs no more than copies would.
    QString intern(const QStringRef& value)
    {
        if (value.isEmpty())
            return value.toString();
        const QString probe = QString::fromRawData(value.unicode(), value.size());
        const auto it = m_texts.constFind(probe);
        if (it != m_texts.cend())
            return *it;
        QString text = value.toString();
        if (m_texts.size() < MaxInternedTexts)
            m_texts.insert(text);
        return text;
    }

    bool number(const QXmlStreamAttributes& a, const char* name, const char* label,
                std::optional<double>* out)
    {
        return numberValue(a.value(QLatin1String(name)), label, out);
    }

    bool numberValue(const QStringRef& value, const char* label, std::optional<double>* out)
    {
        if (value.isEmpty()) {
            out->reset();
            return true;
        }
        bool isNumber = false;
        const double d = value.trimmed().toDouble(&isNumber);
        if (!isNumber || !std::isfinite(d) || value.size() > 40)
            return failHere(L("%1“%2”不是数字").arg(L(label), value.left(40)));
        *out = d;
        return true;
    }

    bool readHeader()
    {
        const QXmlStreamAttributes a = m_x.attributes();
        return text(a, "standard", &m_doc->standard) &&
               text(a, "projectName", &m_doc->projectName) &&
               text(a, "tenderer", &m_doc->tenderer) && text(a, "date", &m_doc->date) &&
               text(a, "tool", &m_doc->tool) && text(a, "toolVersion", &m_doc->toolVersion) &&
               leaf();
    }

    bool readProject()
    {
        const QXmlStreamAttributes a = m_x.attributes();
        if (!text(a, "id", &m_doc->projectId) || !text(a, "name", &m_doc->projectTitle) ||
            !number(a, "provisionalTotal", "暂估材料合计", &m_doc->provisionalTotal))
            return false;
        bool evaluated = false;
        while (child()) {
            if (m_x.name() == QLatin1String("SingleProject")) {
                TenderSingleProject single;
                const QXmlStreamAttributes s = m_x.attributes();
                if (!text(s, "id", &single.id) || !text(s, "name", &single.name))
                    return false;
                if (single.id.isEmpty())
                    return failHere(L("单项工程缺少编号"));
                while (child()) {
                    if (m_x.name() != QLatin1String("UnitProject"))
                        return unexpected();
                    if (!readUnit(&single))
                        return false;
                }
                if (!ok())
                    return false;
                m_doc->singles.append(std::move(single));
            } else if (m_x.name() == QLatin1String("UnitProject")) {
                // Unit projects directly below the construction project.
                if (m_doc->singles.isEmpty() || !m_doc->singles.last().id.isEmpty())
                    m_doc->singles.append(TenderSingleProject());
                if (!readUnit(&m_doc->singles.last()))
                    return false;
            } else if (m_x.name() == QLatin1String("EvaluatedMaterials") && !evaluated) {
                evaluated = true;
                if (!readEvaluated())
                    return false;
            } else {
                return unexpected();
            }
        }
        return ok();
    }

    bool readUnit(TenderSingleProject* single)
    {
        if (m_unitIds.size() >= TenderXmlReader::MaxUnitProjects)
            return failHere(L("单位工程超过%1个").arg(TenderXmlReader::MaxUnitProjects));
        TenderUnitProject unit;
        const QXmlStreamAttributes a = m_x.attributes();
        if (!text(a, "id", &unit.id) || !text(a, "name", &unit.name))
            return false;
        if (unit.id.isEmpty())
            return failHere(L("单位工程缺少编号"));
        if (unit.name.trimmed().isEmpty())
            return failHere(L("单位工程“%1”缺少名称").arg(unit.id));
        if (m_unitIds.contains(unit.id))
            return failHere(L("单位工程编号“%1”重复").arg(unit.id));
        m_unitIds.insert(unit.id);
        bool list = false;
        while (child()) {
            if (m_x.name() != QLatin1String("ProvisionalMaterials") || list)
                return unexpected();
            list = true;
            if (!number(m_x.attributes(), "total", "暂估材料合计", &unit.provisionalTotal))
                return false;
            while (child()) {
                if (m_x.name() != QLatin1String("Material"))
                    return unexpected();
                if (unit.provisional.size() >= TenderXmlReader::MaxMaterialsPerUnit ||
                    ++m_materials > TenderXmlReader::MaxMaterials)
                    return failHere(L("材料条数超过上限"));
                unit.provisional.append(TenderMaterial());
                if (!readMaterial(&unit.provisional.last()))
                    return false;
                if (unit.provisional.last().name.trimmed().isEmpty())
                    return failHere(L("单位工程“%1”的材料缺少名称").arg(unit.name));
                if (!leaf())
                    return false;
            }
            if (!ok())
                return false;
        }
        if (!ok())
            return false;
        single->units.append(std::move(unit));
        return true;
    }

    // The attributes of a provisional material, in one pass over them (a material has a dozen
    // and there may be millions). The attribute list is not kept past the element: holding it
    // while the reader moves on would make the reader copy it.
    bool readMaterial(TenderMaterial* m)
    {
        struct Field
        {
            QLatin1String name;
            QString TenderMaterial::*text;
            std::optional<double> TenderMaterial::*number;
            const char* label;
        };
        static const Field fields[] = {
            {QLatin1String("code"), &TenderMaterial::code, nullptr, nullptr},
            {QLatin1String("name"), &TenderMaterial::name, nullptr, nullptr},
            {QLatin1String("spec"), &TenderMaterial::spec, nullptr, nullptr},
            {QLatin1String("unit"), &TenderMaterial::unit, nullptr, nullptr},
            {QLatin1String("price"), nullptr, &TenderMaterial::price, "暂估单价"},
            {QLatin1String("origin"), &TenderMaterial::origin, nullptr, nullptr},
            {QLatin1String("manufacturer"), &TenderMaterial::manufacturer, nullptr, nullptr},
            {QLatin1String("variety"), &TenderMaterial::variety, nullptr, nullptr},
            {QLatin1String("grade"), &TenderMaterial::grade, nullptr, nullptr},
            {QLatin1String("remark"), &TenderMaterial::remark, nullptr, nullptr},
            {QLatin1String("quantity"), nullptr, &TenderMaterial::quantity, "数量"},
            {QLatin1String("amount"), nullptr, &TenderMaterial::amount, "合价"},
        };
        constexpr int count = int(sizeof(fields) / sizeof(fields[0]));
        // Where each field's value is; the first attribute of a name counts, as a lookup by
        // name would find it.
        QStringRef values[count];
        bool seen[count] = {};
        const QXmlStreamAttributes& attributes = m_x.attributes();
        for (const QXmlStreamAttribute& a : attributes) {
            const QStringRef name = a.name();
            for (int f = 0; f < count; ++f)
                if (!seen[f] && name == fields[f].name) {
                    seen[f] = true;
                    values[f] = a.value();
                    break;
                }
        }
        // Checked in the order the fields are listed, so the first problem reported is the
        // same whatever order the file writes them in.
        for (int f = 0; f < count; ++f) {
            const Field& field = fields[f];
            if (field.text) {
                if (!textValue(values[f], fields[f].name, &(m->*field.text)))
                    return false;
            } else if (!numberValue(values[f], field.label, &(m->*field.number))) {
                return false;
            }
        }
        return true;
    }

    bool readEvaluated()
    {
        if (!number(m_x.attributes(), "total", "需评审材料合计", &m_doc->evaluatedTotal))
            return false;
        while (child()) {
            if (m_x.name() != QLatin1String("Material"))
                return unexpected();
            if (m_doc->evaluated.size() >= TenderXmlReader::MaxMaterialsPerUnit ||
                ++m_materials > TenderXmlReader::MaxMaterials)
                return failHere(L("材料条数超过上限"));
            TenderEvaluatedMaterial m;
            const QXmlStreamAttributes a = m_x.attributes();
            if (!text(a, "serial", &m.serial) || !text(a, "code", &m.code) ||
                !text(a, "name", &m.name) || !text(a, "spec", &m.spec) ||
                !text(a, "unit", &m.unit) || !text(a, "origin", &m.origin) ||
                !text(a, "manufacturer", &m.manufacturer) || !text(a, "variety", &m.variety) ||
                !text(a, "grade", &m.grade) || !text(a, "remark", &m.remark) ||
                !number(a, "price", "单价", &m.price) ||
                !number(a, "quantity", "数量", &m.quantity) ||
                !number(a, "amount", "合价", &m.amount))
                return false;
            if (m.name.trimmed().isEmpty())
                return failHere(L("需评审材料缺少名称"));
            if (!leaf())
                return false;
            m_doc->evaluated.append(std::move(m));
        }
        return ok();
    }

    static constexpr qint64 MaxTokenBytes = qint64(4) << 20;
    static constexpr int MaxInternedTexts = 1 << 20;
    QSet<QString> m_texts;
    QIODevice* m_device;
    QXmlStreamReader m_x;
    bool m_eof = false;
    qint64 m_pending = 0;
    TenderDocument* m_doc;
    QString m_problem;
    QSet<QString> m_unitIds;
    qint64 m_materials = 0;
};

} // namespace

bool TenderXmlReader::canRead(const QByteArray& head) const
{
    int i = head.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    while (i < head.size() &&
           (head[i] == ' ' || head[i] == '\t' || head[i] == '\r' || head[i] == '\n'))
        ++i;
    return i < head.size() && head[i] == '<';
}

bool TenderXmlReader::read(QIODevice* device, TenderDocument* document, QString* problem)
{
    if (TenderXmlFastReader::Read(device, document))
        return true;
    // Whatever the quick reader was not sure of is read again from the start, thoroughly: that
    // reading decides, and says what is wrong.
    if (!device->reset()) {
        if (problem)
            *problem = L("文件读取失败");
        return false;
    }
    return ReadThorough(device, document, problem);
}

bool TenderXmlReader::ReadThorough(QIODevice* device, TenderDocument* document, QString* problem)
{
    *document = TenderDocument();
    Parser parser(device, document);
    if (parser.run())
        return true;
    *document = TenderDocument();
    if (problem)
        *problem = parser.problem();
    return false;
}
