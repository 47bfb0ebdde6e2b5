#include "hosts/assimp/obj_marks.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "hosts/import/import_text.h"

namespace velinor {
namespace {

constexpr std::string_view kBlanks = " \t\r";

class Lines {
  public:
    void read(std::string_view line) {
        line = trimmed(line);
        const std::size_t end = std::min(line.find_first_of(kBlanks), line.size());
        const std::string_view keyword = line.substr(0, end);
        const std::string_view value = trimmed(line.substr(end));
        if (keyword == "vn") hasNormals_ = true;
        if (keyword == "s") hasSmoothing_ = hasSmoothing_ || (value != "off" && value != "0");
        if (keyword == "o") openObject(std::string(value));
    }

    ObjMarks marks() && { return {hasSmoothing_ && !hasNormals_, std::move(reopened_)}; }

  private:
    void openObject(std::string name) {
        if (name == open_) return;
        if (!known_.insert(name).second && told_.insert(name).second) reopened_.add(name);
        open_ = std::move(name);
    }

    bool hasNormals_ = false;
    bool hasSmoothing_ = false;
    std::string open_;
    std::set<std::string> known_;
    std::set<std::string> told_;
    NamedCount reopened_;
};

}  // namespace

ObjMarks readObjMarks(std::istream& file) {
    Lines lines;
    for (std::string line; std::getline(file, line);)
        lines.read(line);
    return std::move(lines).marks();
}

}  // namespace velinor
