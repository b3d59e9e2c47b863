#include "Vornic/library/FileWriter.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/library/FolderLock.h"
#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/ReplaceFile.h"
#include "VornicCore/base/ThisThread.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <span>
#include <utility>

namespace vornic {

std::error_code apply(const FileChange& change) {
    std::error_code error;
    const std::filesystem::path folder = change.file.parent_path();
    if (!change.content) {
        const FolderLock lock(folder);
        std::filesystem::remove(change.file, error);
        return error;
    }
    std::string text;
    try {
        text = change.content();
    } catch (const EncodeError&) {
        return std::make_error_code(std::errc::invalid_argument);
    } catch (const std::system_error& refusal) {
        return refusal.code();
    }
    error = AppFolders::make(folder);
    if (error) {
        return error;
    }
    // While the folder is locked, nobody takes what is being written for a left-over.
    const FolderLock lock(folder);
    return tryReplaceFile(change.file, std::as_bytes(std::span(text)), OnDisk::now, Readers::owner);
}

FileWriter::FileWriter(Scheduler& scheduler, std::function<void(const std::string&)> failed)
    : scheduler_(scheduler), failed_(std::move(failed)), thread_([this] { run(); }) {}

FileWriter::~FileWriter() {
    {
        const std::lock_guard guard(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void FileWriter::write(std::vector<FileChange> changes) {
    if (!changes.empty()) {
        enqueue([this, changes = std::move(changes)] { writeNow(changes); });
    }
}

void FileWriter::whenWritten(std::function<void(const std::string& problem)> done) {
    enqueue([this, done = lifetime_.guard(std::move(done))] {
        writeNow({});
        scheduler_.post([done, problem = problem_] { done(problem); });
    });
}

std::string FileWriter::finish() {
    std::promise<std::string> written;
    std::future<std::string> outcome = written.get_future();
    enqueue([this, &written] {
        writeNow({});
        written.set_value(problem_);
    });
    return outcome.get();
}

void FileWriter::enqueue(std::function<void()> task) {
    {
        const std::lock_guard guard(mutex_);
        tasks_.push_back(std::move(task));
    }
    wake_.notify_one();
}

void FileWriter::run() {
    ThisThread::setName("vornic.files");
    for (;;) {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
            if (tasks_.empty()) {
                return;
            }
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
    }
}

void FileWriter::writeNow(std::vector<FileChange> changes) {
    // What failed before comes first, unless there is something newer for the same file.
    std::vector<FileChange> all;
    std::ranges::copy_if(unwritten_, std::back_inserter(all), [&](const FileChange& former) {
        return std::ranges::find(changes, former.file, &FileChange::file) == changes.end();
    });
    std::ranges::move(changes, std::back_inserter(all));
    unwritten_.clear();
    problem_.clear();
    for (FileChange& change : all) {
        if (const std::error_code error = apply(change)) {
            problem_ = change.failure + ": " + error.message();
            scheduler_.post(lifetime_.guard([this, problem = problem_] { failed_(problem); }));
            unwritten_.push_back(std::move(change));
        }
    }
}

} // namespace vornic
