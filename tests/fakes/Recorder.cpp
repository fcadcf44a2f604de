#include "tests/fakes/Recorder.h"

#include <algorithm>
#include <utility>

namespace Fakes {

Recorder& Recorder::Get() {
    // Never destroyed: objects of static life let go of theirs at the very end.
    static Recorder* const recorder = new Recorder;
    return *recorder;
}

void Recorder::Reset() {
    const std::lock_guard lock(mutex_);
    calls_.clear();
    failures_.clear();
    looks_.clear();
    queries_.clear();
    made_.clear();
    recordDestruction_ = false;
}

std::vector<std::string> Recorder::Calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

std::vector<std::string> Recorder::TakeCalls() {
    const std::lock_guard lock(mutex_);
    return std::exchange(calls_, {});
}

bool Recorder::Matches(const std::string& line, std::string_view call) {
    const std::string_view name = std::string_view(line).substr(0, line.find('('));
    if (name == call) return true;
    const std::size_t dot = name.find('.');
    return dot != std::string_view::npos && name.substr(dot + 1) == call;
}

std::size_t Recorder::Count(std::string_view call) const {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(
        std::ranges::count_if(calls_, [&](const std::string& line) { return Matches(line, call); }));
}

std::string Recorder::Last(std::string_view call) const {
    const std::lock_guard lock(mutex_);
    const auto found =
        std::find_if(calls_.rbegin(), calls_.rend(), [&](const auto& line) { return Matches(line, call); });
    return found == calls_.rend() ? std::string() : *found;
}

void Recorder::RecordDestruction(bool record) {
    const std::lock_guard lock(mutex_);
    recordDestruction_ = record;
}

void Recorder::FailNext(std::string call, HRESULT result) {
    const std::lock_guard lock(mutex_);
    failures_[std::move(call)] = {result, false, 0};
}

void Recorder::FailAfter(std::string call, int successes, HRESULT result) {
    const std::lock_guard lock(mutex_);
    failures_[std::move(call)] = {result, false, successes};
}

void Recorder::FailAlways(std::string call, HRESULT result) {
    const std::lock_guard lock(mutex_);
    failures_[std::move(call)] = {result, true, 0};
}

void Recorder::Succeed(const std::string& call) {
    const std::lock_guard lock(mutex_);
    failures_.erase(call);
}

void Recorder::FailQuery(REFIID iid, HRESULT result) {
    const std::lock_guard lock(mutex_);
    queries_.emplace_back(iid, result);
}

std::vector<std::string> Recorder::Live() const {
    const std::lock_guard lock(mutex_);
    return live_;
}

std::string Recorder::NameOf(const IUnknown* object) const {
    if (!object) return "null";
    const std::lock_guard lock(mutex_);
    const auto found = names_.find(object);
    return found == names_.end() ? "?" : found->second;
}

void Recorder::During(std::string method, std::function<void()> look) {
    const std::lock_guard lock(mutex_);
    looks_[std::move(method)] = std::move(look);
}

HRESULT Recorder::Call(const std::string& object, const std::string& method, const std::string& arguments) {
    std::unique_lock lock(mutex_);
    if (const auto found = looks_.find(method); found != looks_.end()) {
        const std::function<void()> look = found->second;
        lock.unlock();
        look();
        lock.lock();
    }
    const std::string whole = object.empty() ? method : object + '.' + method;
    calls_.push_back(whole + '(' + arguments + ')');
    for (const std::string& name : {whole, method}) {
        const auto found = failures_.find(name);
        if (found == failures_.end()) continue;
        if (found->second.successes > 0) {
            --found->second.successes;
            continue;
        }
        const Failure failure = found->second;
        if (!failure.always) failures_.erase(found);
        return failure.result;
    }
    return S_OK;
}

HRESULT Recorder::Query(REFIID iid) const {
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(queries_, [&](const auto& each) { return each.first == iid; });
    return found == queries_.end() ? S_OK : found->second;
}

std::string Recorder::Add(const std::string& kind, const IUnknown* object) {
    const std::lock_guard lock(mutex_);
    const int number = ++made_[kind];
    std::string name = number == 1 ? kind : kind + std::to_string(number);
    names_[object] = name;
    live_.push_back(name);
    return name;
}

void Recorder::AddFace(const std::string& name, const IUnknown* object) {
    const std::lock_guard lock(mutex_);
    names_[object] = name;
}

void Recorder::Remove(const std::string& name, const IUnknown* object) {
    const std::lock_guard lock(mutex_);
    names_.erase(object);
    const auto found = std::ranges::find(live_, name);
    if (found != live_.end()) live_.erase(found);
    if (recordDestruction_) calls_.push_back('~' + name);
}

void Recorder::RemoveFace(const IUnknown* object) {
    const std::lock_guard lock(mutex_);
    names_.erase(object);
}

}  // namespace Fakes
