// The error of every scene reader.
#pragma once

#include <stdexcept>
#include <string>

namespace velinor {

// A scene that cannot be read. what() is one line for the user: the file, the place in it, what is wrong
// there, the values found and expected, and what to do; for instance "room.scene.json: /nodes/3/children/0:
// node 99 does not exist (5 nodes)".
class SceneError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace velinor
