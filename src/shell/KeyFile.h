#pragma once

/// A text file of groups ("[Name]") with lines "key=value", as desktops keep their settings in. A change
/// touches its own line only; comments, order and all other lines stay to the byte.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pictavo {

class KeyFile {
  public:
    explicit KeyFile(std::string_view text);

    /// The value as it stands, without blanks around it. Of several lines of one key the last one holds.
    std::optional<std::string> Value(const std::string& group, const std::string& key) const;

    /// Changes the line that holds. A new line stands first in its group, a new group last in the file.
    void Set(const std::string& group, const std::string& key, const std::string& value);

    /// Removes every line of the key, and the group's head where that is left with nothing behind it in the
    /// file.
    void Remove(const std::string& group, const std::string& key);

    std::string Text() const;

  private:
    std::optional<std::size_t> FindGroup(const std::string& group) const;
    std::optional<std::size_t> FindLine(const std::string& group, const std::string& key) const;
    void Insert(std::size_t at, std::string line);

    std::vector<std::string> lines_;  // each with its line end; the last one may lack it
};

/// The parts of a list whose items end with ";".
std::vector<std::string> ListItems(std::string_view list);

}  // namespace pictavo
