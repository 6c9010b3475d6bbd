#include "drill/noted_failures.h"

namespace cuedrill::drill {

NotedFailures::NotedFailures(StatusLine& status, app::TraceLog& trace, std::string sentence, std::string trace_word)
    : status_(status), trace_(trace), sentence_(std::move(sentence)), trace_word_(std::move(trace_word))
{
}

void NotedFailures::tell()
{
    if (!reasons_.empty() && !std::exchange(noted_, true))
        first_ = sentence_ + " " + reasons_.front();
    if (!first_.empty() && !status_.is_awaited())
        status_.show_when_free(std::exchange(first_, {}), StatusLine::Waiting::stays);
    if (!reasons_.empty())
        trace_.write_trace(take());
}

std::string NotedFailures::take()
{
    std::string text;
    for (const std::string& reason : std::exchange(reasons_, {}))
        text.append(text.empty() ? trace_word_ + " - " : " - ").append(reason);
    return text;
}

} // namespace cuedrill::drill
