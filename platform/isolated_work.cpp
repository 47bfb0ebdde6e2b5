#include "platform/isolated_run.h"

namespace velinor {
namespace {

// The work that was constructed last; each knows the one before it.
const IsolatedWork* lastWork = nullptr;

}  // namespace

IsolatedWork::IsolatedWork(const char* name, Function function) noexcept
    : name_(name), function_(function), next_(lastWork) {
    lastWork = this;
}

const IsolatedWork* IsolatedWork::find(std::string_view name) {
    const IsolatedWork* work = lastWork;
    while (work != nullptr && work->name() != name)
        work = work->next_;
    return work;
}

}  // namespace velinor
