#include "adapters/sqlite/server_dialect.h"

#include "base/ascii_text.h"
#include "ports/database.h"

#include <algorithm>
#include <vector>

namespace kova {
namespace {

bool isWordCharacter(char c) {
    return (lowered(c) >= 'a' && lowered(c) <= 'z') || isDigit(c) || static_cast<unsigned char>(c) >= 0x80 ||
           std::string_view("_@#$").find(c) != std::string_view::npos;
}

bool isBlank(char c) {
    return std::string_view(" \t\r\n\v\f").find(c) != std::string_view::npos;
}

class Rewriter {
  public:
    explicit Rewriter(std::string_view text) : text_(text) { output_.reserve(text.size() + 64); }

    std::string run() {
        while (position_ < text_.size())
            copyNext();
        endSelect();
        return std::move(output_);
    }

  private:
    /// What is pending until the parenthesis, or the statement, ends.
    struct Level {
        std::string rowLimit;
        std::string closing = ")";
        bool compound = false;
    };

    void copyNext() {
        const char c = text_[position_];
        if (c == '\'' || c == '"')
            copyThrough(std::string_view(&text_[position_], 1), 1);
        else if (c == '[')
            copyThrough("]", 1);
        else if (startsWith("--"))
            copyThrough("\n", 2);
        else if (startsWith("/*"))
            skipComment();
        else if (isWordCharacter(c))
            copyWord();
        else
            copySymbol(c);
    }

    [[nodiscard]] bool startsWith(std::string_view piece) const {
        return text_.substr(position_).starts_with(piece);
    }

    /// A comment may hold others, which SQLite does not know; a blank stands for all of it.
    void skipComment() {
        int depth = 0;
        do {
            const auto mark = std::min(text_.find("/*", position_), text_.find("*/", position_));
            if (mark == std::string_view::npos)
                throw DatabaseError(DatabaseError::CommandFailed, "Missing end comment mark '*/'.", "42000");
            text_[mark] == '/' ? ++depth : --depth;
            position_ = mark + 2;
        } while (depth > 0);
        output_ += ' ';
    }

    /// Copies up to and including the end mark, looking for it after `opening` characters. A doubled quote
    /// inside quotes reads as two strings in a row, which comes to the same.
    void copyThrough(std::string_view endMark, std::size_t opening) {
        const auto found = text_.find(endMark, position_ + opening);
        const auto end = found == std::string_view::npos ? text_.size() : found + endMark.size();
        output_ += text_.substr(position_, end - position_);
        position_ = end;
        if (opening == 1)
            previousWord_ = {};
    }

    void copySymbol(char c) {
        ++position_;
        if (c == '(') {
            levels_.emplace_back();
        } else if (c == ')') {
            endSelect();
            output_ += levels_.back().closing;
            if (levels_.size() > 1)
                levels_.pop_back();
        } else if (c == ';') {
            endSelect();
        }
        if (c != ')')
            output_ += c;
        if (!isBlank(c))
            previousWord_ = {};
    }

    void copyWord() {
        const auto word = wordAt(position_);
        const auto after = position_ + word.size();
        const bool selecting = equalIgnoringCase(previousWord_, "SELECT") ||
                               equalIgnoringCase(previousWord_, "DISTINCT") ||
                               equalIgnoringCase(previousWord_, "ALL");
        previousWord_ = word;
        position_ = after;
        if (equalIgnoringCase(word, "N") && characterAt(after) == '\'')
            return;
        if (equalIgnoringCase(word, "TOP") && selecting && takeTop(after))
            return;
        if (equalIgnoringCase(word, "CONVERT") && takeDateTimeConversion(after))
            return;
        if (equalIgnoringCase(word, "UNION") || equalIgnoringCase(word, "EXCEPT") ||
            equalIgnoringCase(word, "INTERSECT")) {
            levels_.back().compound = true;
            refuseTopInCompound();
        }
        if (equalIgnoringCase(word, "ISNULL") && characterAt(skipBlanks(after)) == '(')
            output_ += "IFNULL";
        else
            output_ += word;
    }

    /// `TOP n` or `TOP (n)`: the number becomes the LIMIT at the end of this SELECT.
    bool takeTop(std::size_t after) {
        auto next = skipBlanks(after);
        const bool bracketed = characterAt(next) == '(';
        if (bracketed)
            next = skipBlanks(next + 1);
        const auto number = wordAt(next);
        if (number.empty() || !std::all_of(number.begin(), number.end(), isDigit))
            return false;
        next += number.size();
        if (bracketed) {
            next = skipBlanks(next);
            if (characterAt(next) != ')')
                return false;
            ++next;
        }
        levels_.back().rowLimit = number;
        refuseTopInCompound();
        position_ = next;
        return true;
    }

    /// `CONVERT(datetime,` opens a call that its closing parenthesis completes.
    bool takeDateTimeConversion(std::size_t after) {
        auto next = skipBlanks(after);
        if (characterAt(next) != '(')
            return false;
        next = skipBlanks(next + 1);
        const auto type = wordAt(next);
        next = skipBlanks(next + type.size());
        if (!equalIgnoringCase(type, "DATETIME") || characterAt(next) != ',')
            return false;
        const std::string name = ServerDateTimeName;
        output_ += "(" + name + "(";
        levels_.emplace_back();
        levels_.back().closing = ") COLLATE " + name + ")";
        position_ = next + 1;
        return true;
    }

    void refuseTopInCompound() const {
        if (levels_.back().compound && !levels_.back().rowLimit.empty())
            throw DatabaseError(DatabaseError::CommandFailed,
                                "TOP in a branch of a compound SELECT is not supported", "42000");
    }

    void endSelect() {
        Level& level = levels_.back();
        if (!level.rowLimit.empty())
            output_ += "\nLIMIT " + level.rowLimit; // on a line of its own: a comment may come before
        level.rowLimit.clear();
        level.compound = false;
    }

    [[nodiscard]] std::string_view wordAt(std::size_t start) const {
        auto end = start;
        while (end < text_.size() && isWordCharacter(text_[end]))
            ++end;
        return text_.substr(start, end - start);
    }
    [[nodiscard]] std::size_t skipBlanks(std::size_t start) const {
        while (start < text_.size() && isBlank(text_[start]))
            ++start;
        return start;
    }
    [[nodiscard]] char characterAt(std::size_t position) const {
        return position < text_.size() ? text_[position] : '\0';
    }

    std::string_view text_;
    std::size_t position_ = 0;
    std::string output_;
    std::string_view previousWord_;
    std::vector<Level> levels_ = std::vector<Level>(1);
};

} // namespace

std::string toSqliteDialect(std::string_view text) {
    return Rewriter(text).run();
}

} // namespace kova
