// sonavel-codec: decodes and encodes sound files for the editor, in a process of its own.
#include <sys/prctl.h>
#include <unistd.h>
#include <csignal>

#include <cstdio>
#include <string_view>

#include "codec/main/commands.h"

namespace {

constexpr int kBadCall = 2;

constexpr char kUsage[] =
    "usage: sonavel-codec probe|decode|encode|responses PATH\n"
    "A part of Sonavel, which talks to it over its standard input and output.\n";

}  // namespace

#if defined(__SANITIZE_ADDRESS__)
// The editor cannot limit the address space of a sanitized program, of which it takes terabytes,
// and takes an end by a signal for a crash.
extern "C" const char* __asan_default_options() {
    return "hard_rss_limit_mb=512:abort_on_error=1:handle_segv=0:handle_abort=0";
}
#endif

int main(int count, char** words) {
    using sonavel::DecodeExtent;
    // Without the editor there is nobody to decode for.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    signal(SIGPIPE, SIG_IGN);
    const std::string_view command = count == 3 ? words[1] : "";
    const bool isKnown =
        command == "probe" || command == "decode" || command == "encode" || command == "responses";
    if (!isKnown || isatty(STDOUT_FILENO) != 0) {
        std::fputs(kUsage, stderr);
        return kBadCall;
    }
    sonavel::RecordOutput output(STDOUT_FILENO);
    if (command == "probe") return DecodeFile(words[2], DecodeExtent::kHeadAlone, output);
    if (command == "decode") return DecodeFile(words[2], DecodeExtent::kAll, output);
    if (command == "responses") return ReadResponses(words[2], output);
    sonavel::RecordInput input(STDIN_FILENO);
    return EncodeFile(words[2], input, output);
}
