#include "tools/audio/FileMetadata.h"

#include "tools/audio/UnreadMetadata.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace tool {

namespace {

constexpr std::pair<int, const char*> kTags[]{
    {SF_STR_TITLE, "TITLE"},   {SF_STR_COPYRIGHT, "COPYRIGHT"}, {SF_STR_SOFTWARE, "SOFTWARE"},
    {SF_STR_ARTIST, "ARTIST"}, {SF_STR_COMMENT, "COMMENT"},     {SF_STR_DATE, "DATE"},
    {SF_STR_ALBUM, "ALBUM"},   {SF_STR_LICENSE, "LICENSE"},     {SF_STR_TRACKNUMBER, "TRACKNUMBER"},
    {SF_STR_GENRE, "GENRE"},
};

// Variable-sized structures of libsndfile, with room for nearly the longest text that it takes.
constexpr std::size_t kTextRoom = 16000;
using Broadcast = SF_BROADCAST_INFO_VAR(kTextRoom);
using Cart = SF_CART_INFO_VAR(kTextRoom);
// As many as libsndfile reads.
constexpr std::size_t kMaxCues = 2500;
using Cues = SF_CUES_VAR(kMaxCues);

// Chunks with text about the recording; they don't depend on the audio's format or length.
constexpr const char* kXmlChunks[]{"iXML", "axml", "_PMX", "aXML"};
constexpr const char* kBinaryChunks[]{"id3 ", "ID3 ", "DISP"};
// Chunks that libsndfile reads into the other members, if not always completely.
constexpr const char* kReadChunks[]{"LIST", "bext", "cart", "cue ", "smpl",
                                    "NAME", "AUTH", "ANNO", "(c) ", "MARK"};
constexpr unsigned kMaxSize = 1 << 24;  // bytes of a chunk that is looked into

// Chunks that hold the audio and its format, padding, or settings of a sampler.
constexpr const char* kAudioChunks[]{"RIFF", "RF64", "FORM", "fmt ", "data", "fact", "inst",
                                     "PEAK", "JUNK", "junk", "PAD ", "FLLR", "ds64", "COMM",
                                     "SSND", "FVER", "INST", "CHAN", "basc", "desc", "info",
                                     "free", "strg", "levl", "afsp"};

template <std::size_t Count>
bool isOneOf(const char* const (&list)[Count], const std::string& id)
{
    return std::find(std::begin(list), std::end(list), id) != std::end(list);
}

bool hasChunks(int format)
{
    const int type = format & SF_FORMAT_TYPEMASK;
    return type == SF_FORMAT_WAV || type == SF_FORMAT_WAVEX || type == SF_FORMAT_RF64
        || type == SF_FORMAT_AIFF;
}

// One of the structures above as bytes; empty if the file has none.
template <typename Structure>
std::string structureOf(SNDFILE* file, int command)
{
    const auto structure = std::make_unique<Structure>();
    std::memset(structure.get(), 0, sizeof(Structure));
    if (sf_command(file, command, structure.get(), sizeof(Structure)) != SF_TRUE)
        return "";
    return {reinterpret_cast<const char*>(structure.get()), sizeof(Structure)};
}

void setStructure(SNDFILE* file, int command, std::string bytes)
{
    if (!bytes.empty())
        sf_command(file, command, bytes.data(), static_cast<int>(bytes.size()));
}

// Reads up to `size` bytes of a chunk's content, and its ID.
bool readChunk(const SF_CHUNK_ITERATOR* chunk, std::size_t size, std::string& data, std::string& id)
{
    SF_CHUNK_INFO info{};
    data.assign(size, '\0');
    info.data = data.data();
    info.datalen = static_cast<unsigned>(size);
    if (sf_get_chunk_data(chunk, &info) != SF_ERR_NO_ERROR)
        return false;
    id.assign(info.id, std::min<std::size_t>(info.id_size, 4));
    return true;
}

void readChunks(SNDFILE* file, FileMetadata& metadata)
{
    for (SF_CHUNK_ITERATOR* it = sf_get_chunk_iterator(file, nullptr); it;
         it = sf_next_chunk_iterator(it)) {
        SF_CHUNK_INFO info{};
        std::string data, id;
        // libsndfile divides by the size.
        if (sf_get_chunk_size(it, &info) != SF_ERR_NO_ERROR || info.datalen == 0
            || !readChunk(it, 1, data, id) || isOneOf(kAudioChunks, id))
            continue;
        const bool xml = isOneOf(kXmlChunks, id);
        const bool copied = xml || isOneOf(kBinaryChunks, id), read = isOneOf(kReadChunks, id);
        if ((!copied && !read) || info.datalen > kMaxSize
            || !readChunk(it, info.datalen, data, id)) {
            metadata.unread.push_back("the chunk '" + id + "'");
        } else if (copied) {
            // libsndfile and others add bytes up to a multiple of four.
            if (xml)
                data.erase(data.find_last_not_of('\0') + 1);
            metadata.chunks.push_back({id, data});
        } else {
            const std::vector<std::string> words = unreadInChunk(id, data, metadata);
            metadata.unread.insert(metadata.unread.end(), words.begin(), words.end());
        }
    }
}

// The markers of an AIFF file: libsndfile limits the size of a header, and writes a damaged file
// beyond it.
std::size_t cuesThatFit(const FileMetadata& metadata)
{
    constexpr std::size_t kRoom = 48000, kMarker = 8;  // bytes
    std::size_t used = 0, count = 0;
    for (const auto& [key, text] : metadata.tags)
        used += text.size();
    for (const SF_CUE_POINT& cue : metadata.cues) {
        used += kMarker + std::strlen(cue.name);
        if (used > kRoom)
            break;
        ++count;
    }
    return count;
}

}  // namespace

const char* tagName(int tag)
{
    const auto found = std::find_if(std::begin(kTags), std::end(kTags),
                                    [tag](const auto& each) { return each.first == tag; });
    return found == std::end(kTags) ? "" : found->second;
}

std::string counted(std::size_t count, const char* one)
{
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

std::size_t namedCues(const FileMetadata& metadata)
{
    return static_cast<std::size_t>(
        std::count_if(metadata.cues.begin(), metadata.cues.end(),
                      [](const SF_CUE_POINT& cue) { return cue.name[0] != '\0'; }));
}

void FileMetadata::delay(std::int64_t frames)
{
    const auto shift = static_cast<std::uint32_t>(frames);
    for (SF_CUE_POINT& cue : cues) {
        cue.position += shift;
        cue.sample_offset += shift;
    }
    for (int i = 0; instrument && i < instrument->loop_count; ++i) {
        instrument->loops[i].start += shift;
        instrument->loops[i].end += shift;
    }
}

void FileMetadata::forgetLoudness()
{
    if (broadcast.empty())
        return;
    Broadcast info;
    std::memcpy(&info, broadcast.data(), sizeof(info));
    constexpr std::int16_t kUnset = 0x7FFF;
    for (std::int16_t* value :
         {&info.loudness_value, &info.loudness_range, &info.max_true_peak_level,
          &info.max_momentary_loudness, &info.max_shortterm_loudness})
        *value = kUnset;
    std::memcpy(broadcast.data(), &info, sizeof(info));
}

std::vector<std::string> FileMetadata::missingFrom(const FileMetadata& written) const
{
    std::vector<std::string> missing;
    for (const auto& [key, text] : tags) {
        const auto found = written.tags.find(key);
        // libsndfile adds its own name to that of the software.
        if (found != written.tags.end() && found->second.rfind(text, 0) == 0)
            continue;
        missing.push_back(std::string("the tag ") + tagName(key));
    }
    if (!broadcast.empty() && written.broadcast.empty())
        missing.push_back(kBroadcastWords);
    if (!cart.empty() && written.cart.empty())
        missing.push_back(kCartWords);
    if (written.cues.size() < cues.size())
        missing.push_back(counted(cues.size() - written.cues.size(), "cue point"));
    if (written.cues.size() == cues.size() && namedCues(written) < namedCues(*this))
        missing.push_back("the names of "
                          + counted(namedCues(*this) - namedCues(written), "cue point"));
    if (instrument
        && (!written.instrument || written.instrument->loop_count < instrument->loop_count))
        missing.push_back(instrument->loop_count > 0 ? "the loop points"
                                                     : "the sampler's settings");
    for (const Chunk& chunk : chunks)
        if (std::none_of(written.chunks.begin(), written.chunks.end(),
                         [&](const Chunk& other) { return other.id == chunk.id; }))
            missing.push_back("the chunk '" + chunk.id + "'");
    missing.insert(missing.end(), unread.begin(), unread.end());
    return missing;
}

FileMetadata readMetadata(SNDFILE* file, int format)
{
    FileMetadata metadata;
    for (const auto& [tag, name] : kTags)
        if (const char* text = sf_get_string(file, tag); text && *text)
            metadata.tags[tag] = text;
    metadata.broadcast = structureOf<Broadcast>(file, SFC_GET_BROADCAST_INFO);
    metadata.cart = structureOf<Cart>(file, SFC_GET_CART_INFO);
    const auto cues = std::make_unique<Cues>();
    std::memset(cues.get(), 0, sizeof(Cues));
    if (sf_command(file, SFC_GET_CUE, cues.get(), sizeof(Cues)) == SF_TRUE)
        metadata.cues.assign(cues->cue_points,
                             cues->cue_points + std::min<std::size_t>(cues->cue_count, kMaxCues));
    SF_INSTRUMENT instrument{};
    if (sf_command(file, SFC_GET_INSTRUMENT, &instrument, sizeof(instrument)) == SF_TRUE)
        metadata.instrument = instrument;
    if (hasChunks(format))
        readChunks(file, metadata);
    return metadata;
}

void writeMetadata(SNDFILE* file, int format, const FileMetadata& metadata)
{
    for (const auto& [tag, text] : metadata.tags)
        sf_set_string(file, tag, text.c_str());
    setStructure(file, SFC_SET_BROADCAST_INFO, metadata.broadcast);
    setStructure(file, SFC_SET_CART_INFO, metadata.cart);
    const bool aiff = (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_AIFF;
    if (const std::size_t count = aiff ? cuesThatFit(metadata) : 0) {
        const auto cues = std::make_unique<Cues>();
        std::memset(cues.get(), 0, sizeof(Cues));
        cues->cue_count = static_cast<std::uint32_t>(count);
        std::copy_n(metadata.cues.begin(), count, cues->cue_points);
        sf_command(file, SFC_SET_CUE, cues.get(), sizeof(Cues));
    }
    // In AIFF, libsndfile writes neither loops nor cues when there are loops.
    if (metadata.instrument && !aiff) {
        SF_INSTRUMENT instrument = *metadata.instrument;
        sf_command(file, SFC_SET_INSTRUMENT, &instrument, sizeof(instrument));
    }
}

}  // namespace tool
