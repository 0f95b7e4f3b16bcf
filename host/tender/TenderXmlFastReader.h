#pragma once

class QIODevice;
struct TenderDocument;

// The quick way through a tender file: a byte-level reader for the plain UTF-8 XML that tender
// files are written in (elements, attributes, the five predefined entities, character
// references, comments, the XML declaration). It reads the device in large blocks and builds
// the document as it goes, without a general XML tokenizer in between.
//
// It only ever says yes when it is sure: a document it accepts is the one the thorough reader
// (TenderXmlReader) would give. Anything else, a broken or refused file as much as a well-formed
// one using XML it does not handle (another encoding, CDATA, processing instructions), makes it
// answer false, and the caller reads the file again with the thorough reader, which gives the
// message.
class TenderXmlFastReader
{
public:
    static bool Read(QIODevice* device, TenderDocument* document);
};
