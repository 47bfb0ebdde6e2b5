#include "hosts/snapshot/snapshot_cbor.h"

#include <cbor.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"

namespace velinor {
namespace {

constexpr std::uint64_t kSelfDescribed = 55799;

enum class ItemKind {
    null,
    boolean,
    number,
    text,
    bytes,
    textChunks,
    byteChunks,
    list,
    map,
    openList,
    openMap,
    tag,
    other,  // undefined and the simple values without a meaning
    stop,
};

// The head of one data item, with its content where that needs no further items.
struct Item {
    ItemKind kind = ItemKind::other;
    double number = 0;
    std::uint64_t size = 0;  // boolean: value; list: elements; map: members; tag: its number
    std::string_view content = {};
};

// The library calls back through C, where no exception may pass: the callbacks only take down what came.
template <class Number>
void takeNumber(void* item, Number value) {
    *static_cast<Item*>(item) = {.kind = ItemKind::number, .number = static_cast<double>(value)};
}

// CBOR keeps a negative integer n as -1 - n.
template <class Number>
void takeNegative(void* item, Number value) {
    *static_cast<Item*>(item) = {.kind = ItemKind::number, .number = -1.0 - static_cast<double>(value)};
}

template <ItemKind kind>
void takeHead(void* item) {
    *static_cast<Item*>(item) = {.kind = kind};
}

template <ItemKind kind, class Size>
void takeSize(void* item, Size size) {
    *static_cast<Item*>(item) = {.kind = kind, .size = size};
}

template <ItemKind kind>
void takeContent(void* item, cbor_data data, std::size_t size) {
    *static_cast<Item*>(item) = {.kind = kind, .content = {reinterpret_cast<const char*>(data), size}};
}

cbor_callbacks makeCallbacks() {
    cbor_callbacks c = cbor_empty_callbacks;
    c.uint8 = takeNumber<std::uint8_t>;
    c.uint16 = takeNumber<std::uint16_t>;
    c.uint32 = takeNumber<std::uint32_t>;
    c.uint64 = takeNumber<std::uint64_t>;
    c.negint8 = takeNegative<std::uint8_t>;
    c.negint16 = takeNegative<std::uint16_t>;
    c.negint32 = takeNegative<std::uint32_t>;
    c.negint64 = takeNegative<std::uint64_t>;
    c.float2 = takeNumber<float>;
    c.float4 = takeNumber<float>;
    c.float8 = takeNumber<double>;
    c.byte_string = takeContent<ItemKind::bytes>;
    c.byte_string_start = takeHead<ItemKind::byteChunks>;
    c.string = takeContent<ItemKind::text>;
    c.string_start = takeHead<ItemKind::textChunks>;
    c.array_start = takeSize<ItemKind::list>;
    c.indef_array_start = takeHead<ItemKind::openList>;
    c.map_start = takeSize<ItemKind::map>;
    c.indef_map_start = takeHead<ItemKind::openMap>;
    c.tag = takeSize<ItemKind::tag>;
    c.boolean = takeSize<ItemKind::boolean>;
    c.null = takeHead<ItemKind::null>;
    c.undefined = takeHead<ItemKind::other>;
    c.indef_break = takeHead<ItemKind::stop>;
    return c;
}

std::optional<TypedArrayKind> typedArrayOf(std::uint64_t tag) {
    switch (tag) {
        case 70:
            return TypedArrayKind::uint32;
        case 78:
            return TypedArrayKind::sint32;
        case 85:
            return TypedArrayKind::float32;
        default:
            return std::nullopt;
    }
}

class Decoder {
  public:
    Decoder(std::string_view bytes, DocumentBuilder& builder) : bytes_(bytes), builder_(builder) {}

    void decode() {
        requireMapAtStart();
        do {
            take(nextItem());
            closeFullContainers();
        } while (!builder_.isDone());
        itemStart_ = offset_;
        if (offset_ < bytes_.size()) fail("the document ends here, but further bytes follow");
    }

  private:
    struct Container {
        bool isMap = false;
        bool isOpen = false;       // ends with a stop, not after `remaining`
        bool isValueNext = false;  // of a map: its name has come
        std::uint64_t remaining =
            0;  // elements or members to come; the document's claim, nothing is set aside for it
    };

    [[noreturn]] void fail(const std::string& problem) const {
        builder_.fail("offset " + std::to_string(itemStart_) + ": " + problem);
    }

    // Refuses other kinds of files in words that fit them.
    void requireMapAtStart() {
        std::string_view rest = bytes_;
        if (rest.starts_with("\xD9\xD9\xF7")) rest.remove_prefix(3);
        if (rest.empty() || (static_cast<unsigned char>(rest.front()) & 0xE0U) != 0xA0U) {
            builder_.fail("this is not a scene snapshot: neither JSON nor CBOR with an object on top");
        }
    }

    Item nextItem() {
        itemStart_ = offset_;
        if (const auto item = headWithoutMeaning()) return *item;
        static const cbor_callbacks callbacks = makeCallbacks();
        Item item;
        const auto* data = reinterpret_cast<cbor_data>(bytes_.data()) + offset_;
        const auto result = cbor_stream_decode(data, bytes_.size() - offset_, &callbacks, &item);
        if (result.status == CBOR_DECODER_NEDATA || offset_ >= bytes_.size()) failCutOff();
        if (result.status != CBOR_DECODER_FINISHED) fail("not CBOR");
        offset_ += result.read;
        return item;
    }

    [[noreturn]] void failCutOff() const {
        fail("the document is cut off here (" + std::to_string(bytes_.size()) + " bytes)");
    }

    // The heads that are well-formed and that the library does not take: tags 6 to 20 and most simple values.
    std::optional<Item> headWithoutMeaning() {
        if (offset_ >= bytes_.size()) failCutOff();
        const auto head = static_cast<unsigned char>(bytes_[offset_]);
        if (head >= 0xC6 && head <= 0xD4) {
            ++offset_;
            return Item{.kind = ItemKind::tag, .size = head - 0xC0U};
        }
        if (head >= 0xE0 && head <= 0xF3) {
            ++offset_;
            return Item{};
        }
        if (head == 0xF8 && offset_ + 1 < bytes_.size() &&
            static_cast<unsigned char>(bytes_[offset_ + 1]) >= 32) {
            offset_ += 2;
            return Item{};
        }
        return std::nullopt;
    }

    void take(const Item& item) {
        if (item.kind == ItemKind::tag) return takeTag(item.size);
        if (item.kind == ItemKind::stop) return takeStop();
        const std::optional<std::uint64_t> tag = tag_;
        tag_.reset();
        if (tag && !builder_.isSkipping()) return takeTypedArray(*tag, item);
        if (isNameNext()) return takeName(item);
        noteItem();
        takeValue(item);
    }

    void takeTag(std::uint64_t tag) {
        if (!builder_.isSkipping() && !typedArrayOf(tag)) {
            if (tag == kSelfDescribed && itemStart_ == 0) return;
            fail("tag " + std::to_string(tag) + " is not expected");
        }
        if (!builder_.isSkipping() && isNameNext()) fail("a tag where the name of a member is expected");
        if (!builder_.isSkipping() && tag_) fail("a tag where the bytes of a typed array are expected");
        tag_ = tag;
    }

    void takeStop() {
        if (tag_ || containers_.empty() || !containers_.back().isOpen || containers_.back().isValueNext) {
            fail("not CBOR: a stop code where an item is expected");
        }
        containers_.pop_back();
        builder_.end();
    }

    // Whether the name of a member comes next: not among what is passed over, where maps may have keys of any
    // kind.
    bool isNameNext() const {
        return !containers_.empty() && containers_.back().isMap && !containers_.back().isValueNext &&
               !builder_.isSkipping();
    }

    // Counts an item, value or key, of the container around it.
    void noteItem() {
        if (containers_.empty()) return;
        Container& container = containers_.back();
        if (container.isMap) {
            container.isValueNext = !container.isValueNext;
            if (container.isValueNext) return;
        }
        if (!container.isOpen) --container.remaining;
    }

    void closeFullContainers() {
        while (!tag_ && !containers_.empty() && !containers_.back().isOpen &&
               !containers_.back().isValueNext && containers_.back().remaining == 0) {
            containers_.pop_back();
            builder_.end();
        }
    }

    void takeName(const Item& item) {
        if (item.kind != ItemKind::text && item.kind != ItemKind::textChunks) {
            fail("the name of a member must be a string");
        }
        const std::string joined =
            item.kind == ItemKind::textChunks ? joinChunks(ItemKind::text) : std::string();
        const std::string_view name =
            item.kind == ItemKind::textChunks ? std::string_view(joined) : item.content;
        if (!toUtf16(name)) fail("the name of a member is not valid UTF-8");
        noteItem();
        builder_.name(name);
    }

    void takeTypedArray(std::uint64_t tag, const Item& item) {
        if (item.kind != ItemKind::bytes && item.kind != ItemKind::byteChunks) {
            fail("tag " + std::to_string(tag) + " without the bytes of a typed array");
        }
        const std::string_view content =
            item.kind == ItemKind::bytes ? item.content : builder_.keep(joinChunks(ItemKind::bytes));
        if (content.size() % 4 != 0) {
            fail("a typed array of " + std::to_string(content.size()) +
                 " bytes, where 4 a number are expected");
        }
        noteItem();
        builder_.typedArray(*typedArrayOf(tag), content);
    }

    void takeText(std::string_view text) {
        if (!builder_.isSkipping() && !toUtf16(text)) builder_.fail("the string is not valid UTF-8");
        builder_.text(text);
    }

    void takeValue(const Item& item) {
        switch (item.kind) {
            case ItemKind::null:
                return builder_.null();
            case ItemKind::boolean:
                return builder_.boolean(item.size != 0);
            case ItemKind::number:
                return builder_.number(item.number);
            case ItemKind::text:
                return takeText(item.content);
            case ItemKind::textChunks:
                return takeText(joinChunks(ItemKind::text));
            case ItemKind::list:
            case ItemKind::openList:
                builder_.beginList();
                containers_.push_back({.isOpen = item.kind == ItemKind::openList, .remaining = item.size});
                return;
            case ItemKind::map:
            case ItemKind::openMap:
                builder_.beginObject();
                containers_.push_back(
                    {.isMap = true, .isOpen = item.kind == ItemKind::openMap, .remaining = item.size});
                return;
            case ItemKind::byteChunks:
                joinChunks(ItemKind::bytes);
                [[fallthrough]];
            case ItemKind::bytes:
            case ItemKind::other:
                if (!builder_.isSkipping()) fail("bytes and simple values have no meaning here");
                return builder_.null();
            case ItemKind::tag:
            case ItemKind::stop:
                break;  // taken before
        }
    }

    // The content of a string that comes in chunks, up to its stop.
    std::string joinChunks(ItemKind kind) {
        std::string joined;
        for (;;) {
            const Item chunk = nextItem();
            if (chunk.kind == ItemKind::stop) return joined;
            if (chunk.kind != kind) fail("not CBOR: a string in chunks holds something else");
            joined += chunk.content;
        }
    }

    std::string_view bytes_;
    DocumentBuilder& builder_;
    std::size_t offset_ = 0;
    std::size_t itemStart_ = 0;
    std::optional<std::uint64_t> tag_;  // of the item to come
    std::vector<Container> containers_;
};

}  // namespace

void decodeCbor(std::string_view bytes, DocumentBuilder& builder) {
    Decoder(bytes, builder).decode();
}

}  // namespace velinor
