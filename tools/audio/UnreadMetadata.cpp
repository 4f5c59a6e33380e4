#include "tools/audio/UnreadMetadata.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace tool {

namespace {

using Words = std::vector<std::string>;

// Text chunks of AIFF and of a WAV file's list that libsndfile reads as tags.
constexpr std::pair<const char*, const char*> kTextChunks[]{
    {"INAM", "TITLE"},     {"IART", "ARTIST"}, {"ICMT", "COMMENT"}, {"ICRD", "DATE"},
    {"ICOP", "COPYRIGHT"}, {"IPRD", "ALBUM"},  {"IGNR", "GENRE"},   {"ITRK", "TRACKNUMBER"},
    {"ISFT", "SOFTWARE"},  {"NAME", "TITLE"},  {"AUTH", "ARTIST"},  {"ANNO", "COMMENT"},
    {"(c) ", "COPYRIGHT"},
};

// The unsigned number in `size` bytes; bytes beyond the end count as 0.
std::uint64_t number(const std::string& bytes, std::size_t at, std::size_t size, bool bigEndian)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t place = at + (bigEndian ? i : size - 1 - i);
        value = value << 8 | (place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0);
    }
    return value;
}

void add(Words& words, const std::string& text)
{
    if (std::find(words.begin(), words.end(), text) == words.end())
        words.push_back(text);
}

// Names the tag unless it was read with this text, which libsndfile may have shortened.
void addTag(Words& words, const std::string& name, const std::string& text,
            const FileMetadata& read)
{
    const bool isRead = std::any_of(read.tags.begin(), read.tags.end(), [&](const auto& tag) {
        return tagName(tag.first) == name && text.rfind(tag.second, 0) == 0;
    });
    if (!isRead && !text.empty() && text[0] != '\0')
        add(words, "the tag " + name);
}

std::string tagOfChunk(const std::string& id)
{
    for (const auto& [chunk, tag] : kTextChunks)
        if (id == chunk)
            return tag;
    return id;
}

// A list of a WAV file: tags, or what belongs to the cue points.
void addList(Words& words, const std::string& list, const FileMetadata& read)
{
    const bool tags = list.compare(0, 4, "INFO") == 0;
    std::size_t names = 0;
    for (std::size_t at = 4; at + 8 <= list.size();) {
        const std::string id = list.substr(at, 4);
        const std::size_t size = number(list, at + 4, 4, false);
        if (tags)
            addTag(words, tagOfChunk(id), list.substr(at + 8, size), read);
        else if (id == "labl")
            ++names;
        else
            add(words, "the chunk '" + id + "'");
        at += 8 + size + size % 2;
    }
    if (names > namedCues(read))
        add(words, "the names of " + counted(names - namedCues(read), "cue point"));
}

// The comments of a FLAC file: the name of the program that wrote it, and the tags as NAME=text.
void addComments(Words& words, const std::string& block, const FileMetadata& read)
{
    std::size_t at = 4 + number(block, 0, 4, false);
    std::uint64_t count = number(block, at, 4, false);
    for (at += 4; count > 0 && at + 4 <= block.size(); --count) {
        const std::size_t size = number(block, at, 4, false);
        const std::string comment = block.substr(at + 4, size);
        const std::size_t equals = comment.find('=');
        std::string name = comment.substr(0, equals);
        for (char& c : name)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        if (equals != std::string::npos)
            addTag(words, name, comment.substr(equals + 1), read);
        at += 4 + size;
    }
}

void addMore(Words& words, std::uint64_t there, std::size_t read, const char* what)
{
    if (there > read)
        add(words, counted(there - read, what));
}

}  // namespace

std::vector<std::string> unreadInChunk(const std::string& id, const std::string& content,
                                       const FileMetadata& read)
{
    Words words;
    if (id == "LIST")
        addList(words, content, read);
    else if (id == "bext" && read.broadcast.empty())
        add(words, kBroadcastWords);
    else if (id == "cart" && read.cart.empty())
        add(words, kCartWords);
    else if (id == "cue ")
        addMore(words, number(content, 0, 4, false), read.cues.size(), "cue point");
    else if (id == "MARK")
        addMore(words, number(content, 0, 2, true), read.cues.size(), "cue point");
    else if (id == "smpl")
        addMore(words, number(content, 28, 4, false),
                read.instrument ? static_cast<std::size_t>(read.instrument->loop_count) : 0,
                "loop");
    else if (const std::string tag = tagOfChunk(id); tag != id)
        addTag(words, tag, content, read);
    return words;
}

std::vector<std::string> unreadInFlac(const ReadBytes& file, const FileMetadata& read)
{
    enum Block { kApplication = 2, kComments = 4, kCueSheet = 5, kPicture = 6 };
    Words words;
    if (file(0, 4) != "fLaC")
        return words;
    std::uint64_t head = 0;
    constexpr std::uint64_t kLast = 0x80000000;
    for (std::int64_t at = 4; !(head & kLast);
         at += 4 + static_cast<std::int64_t>(head & 0xFFFFFF)) {
        const std::string bytes = file(at, 4);
        if (bytes.size() < 4)
            break;
        head = number(bytes, 0, 4, true);
        switch (head >> 24 & 0x7F) {
        case kApplication:
            add(words, "the application data");
            break;
        case kCueSheet:
            add(words, "the cue sheet");
            break;
        case kPicture:
            add(words, "the picture");
            break;
        case kComments:
            addComments(words, file(at + 4, head & 0xFFFFFF), read);
            break;
        default:
            break;
        }
    }
    return words;
}

}  // namespace tool
