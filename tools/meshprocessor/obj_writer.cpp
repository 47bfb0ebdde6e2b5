#include "tools/meshprocessor/obj_writer.h"

#include <algorithm>
#include <charconv>
#include <random>
#include <string_view>
#include <system_error>

#include "base/text.h"
#include "base/text_sink.h"
#include "platform/error_text.h"
#include "platform/text_file.h"

// o part_1
// v -0.5 0 0.25      the shape's own points
// ...
// f 1 3 2            counted from 1 through the whole file
// ...
// o part_2
// ...

namespace velinor {
namespace {

namespace fs = std::filesystem;

// A file under a name of its own that becomes `target` or goes away.
class PendingFile {
  public:
    explicit PendingFile(const fs::path& target) : target_(target), path_(unusedName(target)), file_(path_) {
        if (!file_.error().empty()) fail(file_.error());
    }
    ~PendingFile() {
        if (isMoved_) return;
        file_.close();
        std::error_code error;
        fs::remove(path_, error);
    }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    void write(std::string_view text) {
        file_.write(text);
        if (!file_.error().empty()) fail(file_.error());
    }

    void moveIntoPlace() {
        if (!file_.close()) fail(file_.error());
        std::error_code error;
        fs::rename(path_, target_, error);
        if (error) fail(errorText(error));
        isMoved_ = true;
    }

  private:
    // Short whatever the target's name is, so that it is valid wherever that one is.
    static fs::path unusedName(const fs::path& target) {
        std::random_device random;
        for (;;) {
            fs::path path = target.parent_path() / (".meshprocessor-" + std::to_string(random()) + ".tmp");
            std::error_code error;
            if (!fs::exists(fs::symlink_status(path, error))) return path;
        }
    }

    [[noreturn]] void fail(const std::string& reason) const {
        throw MeshError(printable(utf8Path(target_)) + ": cannot be written: " + reason +
                        "; check free space and permissions of the folder");
    }

    fs::path target_;
    fs::path path_;
    TextFile file_;
    bool isMoved_ = false;
};

template <class Number>
void appendNumber(std::string& text, Number number) {
    char digits[32];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), number);
    text += ' ';
    text.append(digits, result.ptr);
}

// Formats into pieces that are written when they have grown.
class ObjText {
  public:
    explicit ObjText(PendingFile& file) : file_(file) {}

    void line(std::string_view keyword, std::string_view name) {
        text_ += keyword;
        text_ += ' ';
        text_ += name;
        end();
    }
    template <class Number>
    void line(std::string_view keyword, const std::array<Number, 3>& numbers) {
        text_ += keyword;
        for (const Number number : numbers)
            appendNumber(text_, number);
        end();
    }
    void flush() {
        file_.write(text_);
        text_.clear();
    }

  private:
    void end() {
        constexpr std::size_t kPiece = 1 << 16;
        text_ += '\n';
        if (text_.size() >= kPiece) flush();
    }

    PendingFile& file_;
    std::string text_;
};

// The number of lines "v" written. `before` are those of the shapes before.
std::size_t writeShape(ObjText& text, std::span<const Point> points, const Shape& shape, std::size_t before) {
    const std::vector<std::uint32_t> corners = cornersOf(shape.faces);
    text.line("o", shape.name);
    for (const std::uint32_t corner : corners)
        text.line("v", points[corner]);
    for (const Face& face : shape.faces) {
        std::array<std::size_t, 3> numbers{};
        std::transform(face.begin(), face.end(), numbers.begin(), [&](std::uint32_t corner) {
            const auto found = std::lower_bound(corners.begin(), corners.end(), corner);
            return before + static_cast<std::size_t>(found - corners.begin()) + 1;
        });
        text.line("f", numbers);
    }
    return corners.size();
}

}  // namespace

void writeObj(const fs::path& file, std::span<const Point> points, const std::vector<Shape>& shapes) {
    PendingFile pending(file);
    ObjText text(pending);
    std::size_t written = 0;
    for (const Shape& shape : shapes)
        written += writeShape(text, points, shape, written);
    text.flush();
    pending.moveIntoPlace();
}

}  // namespace velinor
