#pragma once

#include "Vornic/ports/Log.h"

#include <string>

namespace vornic {

/// Writes to standard error and, where one is running, to the system's journal; once only where
/// standard error is the journal already. Thread: any but the audio thread.
class JournalLog final : public Log {
  public:
    JournalLog();

    void info(const std::string& line) override;
    void warning(const std::string& line) override;

  private:
    void write(int priority, const std::string& line) const;

    bool standardErrorIsJournal_;
};

} // namespace vornic
