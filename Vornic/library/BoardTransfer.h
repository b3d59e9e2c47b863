#pragma once

#include "Vornic/library/BoardStore.h"
#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/board/BoardFile.h"

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// Says in the words of the user why a board could not go into a file or come out of one.
class BoardTransferError : public std::runtime_error {
  public:
    BoardTransferError(const std::string& message, std::string detail)
        : std::runtime_error(message), detail_(std::move(detail)) {}

    /// What is wrong with which file, for the log and the command line; may be empty.
    const std::string& detail() const { return detail_; }

    /// Both, for the command line.
    std::string whole() const { return detail_.empty() ? what() : what() + (" " + detail_); }

  private:
    std::string detail_;
};

/// The user's samples that the layers of a board name, in the order of their first use.
std::vector<std::string> usersSamplesOf(const Board& board, const SampleLibrary& library);

/// Writes a board file with the user's samples that the board uses, whole or not at all. Throws
/// BoardTransferError, also where no board file could hold it. Thread: any; a second for a large
/// one.
void exportBoard(const Board& board, const SampleLibrary& library,
                 const std::filesystem::path& file, const UnknownMembers& unknown = {});

/// The most recordings that a file may bring along. A board made by hand has some dozens.
inline constexpr std::size_t mostImportedSamples = 2000;

/// What a board file or a pack brings along, before it has met a library.
struct ReadBoard {
    Board board;
    UnknownMembers unknown;
    /// In the file, by place in `samples`.
    std::vector<std::string> ids;
    std::vector<SampleLibrary::NewSample> samples;
};

/// Reads a board file. Throws BoardTransferError, also when a stop was requested. Thread: any;
/// a second for a large one.
ReadBoard readBoardFile(const std::filesystem::path& file, const std::stop_token& stop = {});

/// The same of what has been read already, however many recordings there are. Thread: any.
ReadBoard readContents(BoardFile::Contents contents);

/// A board of a file that is there for this run only.
struct OpenedBoard {
    Board board;
    /// What a newer version has put into it.
    UnknownMembers unknown;
    /// The ids of what it brought into the library.
    std::vector<std::string> samples;
};

/// Opens a board that was read for this run only: its samples join `library` under fresh ids, so
/// that nothing that a file says becomes a path or takes the place of something that is there, and
/// are not written. Thread: any.
OpenedBoard openBoard(ReadBoard read, SampleLibrary& library);

/// Makes the samples of an opened board the user's. Throws BoardTransferError; then they are still
/// there for this run. Thread: any; it waits for the disk.
void keepSamples(const OpenedBoard& opened, SampleLibrary& library);

/// An opened board under an id of its own, as the user's, to be saved in `store`.
Board adopted(const OpenedBoard& opened, const BoardStore& store);

/// Adds the samples of a board that was read to the user's and saves it as one of the user's.
/// Throws BoardTransferError; then nothing was added. Thread: main.
Board importBoard(ReadBoard read, BoardStore& store, SampleLibrary& library);

} // namespace vornic
