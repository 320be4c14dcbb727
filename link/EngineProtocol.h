/// The words that pass between the automation server and what runs inside Octave.
///
/// The server listens on 127.0.0.1, on a port of the system's choice, and starts Octave with the port and a
/// one-time token in the environment. Octave's side opens two kinds of connection. Each begins with a
/// greeting: the token's characters, then one byte that tells the role. A wrong greeting is hung up on, and
/// so is one that takes seconds.
///
/// On both connections a message is one byte `kind`, a uint32 `length` and `length` bytes. All integers are
/// little-endian.
#pragma once

#include <cstdint>

namespace solvane::engine {

/// Decimal port number of the server on 127.0.0.1.
inline constexpr char portVariable[] = "SOLVANE_ENGINE_PORT";
/// One-time token, `tokenLength` characters 0-9 and a-f.
inline constexpr char tokenVariable[] = "SOLVANE_ENGINE_TOKEN";
inline constexpr std::uint32_t tokenLength = 32;
/// Decimal number of the ANSI code page on the server's side, which is the unit's.
inline constexpr char codePageVariable[] = "SOLVANE_ENGINE_CODE_PAGE";

/// Role byte of the connection on which Octave takes commands: server sends `execute`, Octave answers
/// `result`, or `failed` with the text of an error that the command did not catch, or `lost`. The server may
/// send `stop` at any time; Octave then lets the command fail, or ends without an answer.
inline constexpr char commandRole = 'C';
/// Role byte of the connection on which CapeOpenUnitMex reaches a unit: each message is answered by `done`
/// or `failed` before the next is sent.
inline constexpr char gatewayRole = 'G';

enum class MessageKind : std::uint8_t {
    execute = 'E', ///< text of a command, UTF-8
    result = 'T',  ///< all that the command printed, UTF-8
    lost = 'L',    ///< it is unknown what the command did, with a text why, UTF-8; Octave is not fit for more
    stop = 'S',    ///< lets the script fail, or ends Octave and the programs that its script waits for

    open = 'O', ///< a unit's id, with braces: opens its block and its two events
    exchange =
        'X',     ///< uint32 wanted, then the request's bytes: writes the block, signals, waits for the
                 ///< reply, and answers with the first `wanted` bytes of the block (fewer if it is smaller)
    read = 'R',  ///< uint32 offset, uint32 count: those bytes of the block, as far as it reaches
    close = 'Q', ///< closes the block and the events
    pipes = 'P', ///< two PipeEnds, the server's for the requests and for the answers, before anything else:
                 ///< if the answer is `done`, all that follows passes through them

    done = 'D',   ///< success, with the bytes asked for
    failed = 'F', ///< failure, with a text; UTF-8 where a command failed
};

/// An end of a pipe of Octave's process, which the server finds in /proc/`process`/fd. The inode shows
/// whether that is the same pipe: Octave may run with process numbers of its own.
struct PipeEnd {
    std::uint32_t process;
    std::uint32_t descriptor;
    std::uint64_t inode;
};

} // namespace solvane::engine
