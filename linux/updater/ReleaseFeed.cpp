#include <linux/updater/ReleaseFeed.h>

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

#include <utility>

namespace orrivane {

namespace {

constexpr QLatin1String sparkle("http://www.andymatuschak.org/xml-namespaces/sparkle");

template <typename Text>
std::string trimmed(const Text& text) {
    return text.trimmed().toUtf8().toStdString();
}

bool isForLinux(const std::string& system) {
    return system.empty() || system == "linux";
}

class Reader {
  public:
    explicit Reader(std::string_view xml)
        : xml_(QByteArray::fromRawData(xml.data(), static_cast<qsizetype>(xml.size()))) {}

    FeedReading read() {
        FeedReading reading;
        if (xml_.readNext() == QXmlStreamReader::StartDocument)
            readDocument(reading.entries);
        if (xml_.hasError())
            refuse(QStringLiteral("it is not well-formed (line %1)").arg(xml_.lineNumber()));
        if (problem_.isEmpty())
            return reading;
        return {{}, "The release feed cannot be used: " + problem_.toStdString() + "."};
    }

  private:
    void refuse(const QString& problem) {
        if (problem_.isEmpty())
            problem_ = problem;
    }

    // Stops at the document type, before an entity that it declares could be expanded.
    bool next() {
        if (!problem_.isEmpty() || xml_.atEnd())
            return false;
        const auto token = xml_.readNext();
        if (token == QXmlStreamReader::DTD)
            refuse("it has a document type");
        else if (token == QXmlStreamReader::EntityReference)
            refuse("it has entities of its own");
        return problem_.isEmpty() && !xml_.hasError();
    }

    bool isPlain(QLatin1String name) const {
        return xml_.namespaceUri().isEmpty() && xml_.name() == name;
    }
    bool isSparkle(QLatin1String name) const {
        return xml_.namespaceUri() == sparkle && xml_.name() == name;
    }

    /// Calls `child` at the start of each child; it reads that child to its end.
    template <typename Child>
    void eachChild(Child child) {
        while (next() && !xml_.isEndElement())
            if (xml_.isStartElement())
                child();
    }

    // The reader's own ways to skip and to take text would pass over entities.
    void skip() {
        for (int depth = 1; depth > 0 && next();)
            depth += xml_.isStartElement() ? 1 : xml_.isEndElement() ? -1 : 0;
    }
    std::string text() {
        QString text;
        for (int depth = 1; depth > 0 && next();) {
            depth += xml_.isStartElement() ? 1 : xml_.isEndElement() ? -1 : 0;
            if (depth == 1 && xml_.isCharacters())
                text += xml_.text();
        }
        return trimmed(text);
    }

    void readDocument(std::vector<ReleaseEntry>& entries) {
        bool isFeed = false;
        while (next()) {
            if (!xml_.isStartElement())
                continue;
            isFeed = isPlain(QLatin1String("rss"));
            if (isFeed)
                eachChild([&] { readChannel(entries); });
            else
                skip();
        }
        if (!isFeed && !xml_.hasError())
            refuse("it is another kind of document");
    }

    void readChannel(std::vector<ReleaseEntry>& entries) {
        if (!isPlain(QLatin1String("channel"))) {
            skip();
            return;
        }
        eachChild([&] {
            if (isPlain(QLatin1String("item")))
                entries.push_back(readEntry());
            else
                skip();
        });
    }

    ReleaseEntry readEntry() {
        ReleaseEntry entry;
        eachChild([&] {
            if (isPlain(QLatin1String("enclosure")))
                readEnclosure(entry);
            else if (isPlain(QLatin1String("description")))
                readNotes(entry);
            else if (auto* field = fieldOf(entry))
                *field = text();
            else
                skip();
        });
        return entry;
    }

    std::string* fieldOf(ReleaseEntry& entry) const {
        if (isPlain(QLatin1String("title")))
            return &entry.title;
        const std::pair<QLatin1String, std::string*> fields[] = {
            {QLatin1String("version"), &entry.version},
            {QLatin1String("shortVersionString"), &entry.shortVersion},
            {QLatin1String("releaseNotesLink"), &entry.notesLink},
            {QLatin1String("channel"), &entry.channel},
            {QLatin1String("edSignature"), &entry.entrySignature},
        };
        for (const auto& [name, field] : fields)
            if (isSparkle(name))
                return field;
        return nullptr;
    }

    void readNotes(ReleaseEntry& entry) {
        entry.notesFormat = trimmed(xml_.attributes().value(sparkle, QLatin1String("format")));
        entry.notes = text();
    }

    // One entry may have a file for each system.
    void readEnclosure(ReleaseEntry& entry) {
        const auto attributes = xml_.attributes();
        const auto plain = [&](const char* name) {
            return trimmed(attributes.value(QLatin1String(name)));
        };
        const auto ours = [&](const char* name) {
            return trimmed(attributes.value(sparkle, QLatin1String(name)));
        };
        auto system = ours("os");
        const bool better = isForLinux(system) && !isForLinux(entry.system);
        if (entry.address.empty() || better) {
            entry.system = std::move(system);
            entry.address = plain("url");
            entry.length = plain("length");
            entry.type = plain("type");
            entry.fileSignature = ours("edSignature");
        }
        // Feeds may carry the versions here, too.
        if (entry.version.empty())
            entry.version = ours("version");
        if (entry.shortVersion.empty())
            entry.shortVersion = ours("shortVersionString");
        skip();
    }

    QXmlStreamReader xml_;
    QString problem_;
};

} // namespace

std::string ReleaseEntry::signedText() const {
    std::string text = "orrivane release entry 1\n";
    const std::pair<const char*, const std::string*> fields[] = {
        {"title", &title},     {"version", &version},    {"short", &shortVersion},
        {"notes", &notes},     {"format", &notesFormat}, {"link", &notesLink},
        {"channel", &channel}, {"system", &system},      {"address", &address},
        {"length", &length},   {"type", &type},          {"file", &fileSignature},
    };
    for (const auto& [name, value] : fields)
        text += std::string(name) + ' ' + std::to_string(value->size()) + '\n' + *value + '\n';
    return text;
}

FeedReading readReleaseFeed(std::string_view xml) {
    return Reader(xml).read();
}

} // namespace orrivane
