// Any line gives a request or none; what is sent back is valid JSON on one line and holds the input's own
// bytes.
#include "claude/ControlRequests.h"
#include "claude/JsonSlices.h"
#include "claude/StreamEncoder.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace
{

void expect(bool holds)
{
    if (!holds)
        std::abort();
}

void expectSendable(const QByteArray &line)
{
    expect(!line.contains('\n') && !line.contains('\r'));
    expect(Vesk::JsonSlices::isValidObject({line.constData(), static_cast<size_t>(line.size())}));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace Vesk;
    const std::string_view line(reinterpret_cast<const char *>(data), size);
    if (line.find_first_of("\n\r") != std::string_view::npos)
        return 0;

    if (const auto outcome = controlRequestOutcome(line, true, false, std::nullopt); outcome.newPending) {
        const PermissionRequest &request = *outcome.newPending;
        const QByteArray allow = encodeControlResponse(
            request.requestId, PermissionDecision::allow(request.rawInputJSON, request.rawSuggestionsJSON));
        expectSendable(allow);
        expect(allow.contains("\"updatedInput\":" + request.rawInputJSON));
        expect(!request.rawSuggestionsJSON
               || allow.contains("\"updatedPermissions\":" + *request.rawSuggestionsJSON));
    } else {
        for (const QByteArray &deny : outcome.denyLines)
            expectSendable(deny);
    }
    if (const auto request = parseQuestionRequest(line, false)) {
        const QByteArray input = encodeQuestionUpdatedInput(*request, {{{}, QStringLiteral("\"\\\n")}});
        expectSendable(encodeControlResponse(request->requestId, PermissionDecision::allow(input)));
        expect(JsonSlices::isValidObject({input.constData(), static_cast<size_t>(input.size())}));
    }
    return 0;
}
