#pragma once

#include "TenderFileReader.h"

// Reads the XML tender file of docs/tender-file.md as a stream. It accepts exactly the
// documented elements, refuses any document type declaration (so no entity can expand), and
// bounds every count and every text it keeps. Files go through TenderXmlFastReader first; what
// that is not sure of is read again by ReadThorough, which gives the message.
class TenderXmlReader : public TenderFileReader
{
public:
    static constexpr int MaxUnitProjects = 10000;
    static constexpr int MaxMaterialsPerUnit = 200000;
    static constexpr int MaxMaterials = 4000000;
    static constexpr int MaxTextLength = 2000;

    bool canRead(const QByteArray& head) const override;
    bool read(QIODevice* device, TenderDocument* document, QString* problem) override;

    // The general reading over QXmlStreamReader, for any XML.
    static bool ReadThorough(QIODevice* device, TenderDocument* document, QString* problem);
};
