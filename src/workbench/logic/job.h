// workbench/logic/job.h: what a command of the workbench tells whoever started it, and how it is
// refused.
#pragma once
#include "platform/base/failure.h"

#include <cmath>

// The window shows these, the command line hardly any of them. The defaults do nothing. Calls come
// in the order of the work, on the caller's thread.
class JobListener {
public:
    virtual ~JobListener() = default;

    virtual void pvSetProgress(int iPercent) { (void)iPercent; }  // 0 to 100; 0 once it is over
    // Asked after each row of the whole-list fill; true ends the fill and keeps what it did.
    [[nodiscard]] virtual bool cancelled() { return false; }
    // A long piece of work begins, with the words for the wait window, and ends. Never nested; an
    // end comes for every begin, also when the work fails.
    virtual void showWait(TextView sInfo) { (void)sInfo; }
    virtual void closeWait() {}
    virtual void enableSave(bool bEnabled) { (void)bEnabled; }
    virtual void focusList() {}
};

// The wait words stand for as long as this lives.
class WaitWords {
public:
    WaitWords(JobListener& listener, TextView sInfo) : m_listener(listener) {
        m_listener.showWait(sInfo);
    }
    ~WaitWords() { m_listener.closeWait(); }
    WaitWords(const WaitWords&) = delete;
    WaitWords& operator=(const WaitWords&) = delete;

private:
    JobListener& m_listener;
};

// done / whole * 100, rounded to the nearest integer, halves to even. whole is not 0.
[[nodiscard]] inline int percentOf(std::int64_t done, std::int64_t whole) {
    // Exact: a double tells every half of these numbers from what is beside it.
    return static_cast<int>(
        std::lrint(static_cast<double>(done) * 100.0 / static_cast<double>(whole)));
}

// What was asked for cannot be meant; nothing has been read or written yet.
struct Refused : Failure {
    explicit Refused(Text sMessage) : Failure(kOwnError, u"", std::move(sMessage)) {}
};

// A file could not be read or written. sFile is for callers that have no window to show which.
struct FileFailure : Failure {
    FileFailure(const Failure& failure, TextView sFile_) : Failure(failure), sFile(sFile_) {}

    Text sFile;
};
