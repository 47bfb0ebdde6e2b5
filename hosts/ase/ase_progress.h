// How far the reading of an ASE file is.
#pragma once

#include <cstddef>

#include "base/progress.h"
#include "hosts/ase/ase_lexer.h"

namespace velinor {

// Tells of the bytes that a lexer has gone over. Both must outlive it.
class AseProgress {
  public:
    AseProgress(Progress& progress, const AseLexer& lexer) : progress_(progress), lexer_(lexer) {}

    // One of many small things has been read.
    void step() {
        constexpr unsigned kStepsAtOnce = 4096;
        if (++steps_ % kStepsAtOnce == 0) tell();
    }

    void tell() {
        progress_.advance(lexer_.position() - told_);
        told_ = lexer_.position();
    }

  private:
    Progress& progress_;
    const AseLexer& lexer_;
    std::size_t told_ = 0;
    unsigned steps_ = 0;
};

}  // namespace velinor
