// What the graphics fakes share: the calls so far in order, the results of those that are not to succeed, and the
// objects that still live. One for the process, usable on any thread.
#pragma once

#include <unknwn.h>

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace Fakes {

/// Each call is a line such as "SwapChain.ResizeBuffers(0, 800, 600, 0, 0x40)". Free functions have no object name. The
/// first object of a kind has the kind's name, further ones a number: "Visual", "Visual2", "Visual3".
class Recorder {
public:
    static Recorder& Get();

    /// Forgets calls, failures and the numbering of names. Objects that live stay known.
    void Reset();

    // Calls.

    std::vector<std::string> Calls() const;
    /// The calls so far, which are forgotten.
    std::vector<std::string> TakeCalls();
    /// How many calls there were of "Present1", or of one object's "SwapChain2.Present1".
    std::size_t Count(std::string_view call) const;
    /// The last call of that name, whole; empty if there was none.
    std::string Last(std::string_view call) const;
    /// Also records the end of each object, as "~Visual2". Off after Reset.
    void RecordDestruction(bool record);

    /// Runs `look` at each call of a method of that name, on the caller's thread, until Reset.
    void During(std::string method, std::function<void()> look);

    // Failures. Names are "Method" for every object or "Object.Method" for one.

    /// The next call of that name returns `result`.
    void FailNext(std::string call, HRESULT result);
    /// Lets `successes` calls of that name pass; the one after them returns `result`.
    void FailAfter(std::string call, int successes, HRESULT result);
    /// Every call of that name returns `result`, until Reset or Succeed.
    void FailAlways(std::string call, HRESULT result);
    /// Takes FailNext and FailAlways of that name back.
    void Succeed(const std::string& call);
    /// No object hands out that interface any more; QueryInterface returns `result`.
    void FailQuery(REFIID iid, HRESULT result);

    // Objects.

    /// Names of the objects that live.
    std::vector<std::string> Live() const;
    std::string NameOf(const IUnknown* object) const;

    // For the fakes.

    /// Records a call and returns what it is to return: S_OK or a failure that was asked for.
    HRESULT Call(const std::string& object, const std::string& method, const std::string& arguments);
    HRESULT Query(REFIID iid) const;
    std::string Add(const std::string& kind, const IUnknown* object);
    /// Makes `object` another face of the object of that name.
    void AddFace(const std::string& name, const IUnknown* object);
    void Remove(const std::string& name, const IUnknown* object);
    void RemoveFace(const IUnknown* object);

private:
    struct Failure {
        HRESULT result = S_OK;
        bool always = false;
        int successes = 0;  // calls that pass before it
    };

    Recorder() = default;
    static bool Matches(const std::string& line, std::string_view call);

    mutable std::mutex mutex_;
    // All below are guarded by mutex_.
    std::vector<std::string> calls_;
    std::map<std::string, Failure> failures_;
    std::map<std::string, std::function<void()>> looks_;
    std::vector<std::pair<IID, HRESULT>> queries_;
    std::map<std::string, int> made_;
    std::map<const IUnknown*, std::string> names_;
    std::vector<std::string> live_;
    bool recordDestruction_ = false;
};

}  // namespace Fakes
