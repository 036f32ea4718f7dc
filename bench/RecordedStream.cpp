#include "bench/RecordedStream.h"

#include <QString>

#include <random>

namespace Vesk::Bench
{

namespace
{

const char *const deltas[] = {
    "환불을 기록한 ",  "뒤에 이벤트 ",  "번호를 저장합니다. ",
    "the handler ",    "`insertOnce` ", "in one transaction, ",
    "그래서 두 번째 ", "웹훅은 ",       "검사를 지나갑니다.\\n\\n",
    "- first, ",       "**먼저** ",     "so that a retry ",
};

class Writer
{
public:
    explicit Writer(qsizetype bytes) { m_out.reserve(bytes + 1024 * 1024); }

    [[nodiscard]] qsizetype size() const { return m_out.size(); }
    [[nodiscard]] QByteArray take() { return std::move(m_out); }

    void turn()
    {
        line(
            R"({"type":"system","subtype":"init","cwd":"/home/me/src/billing","session_id":")" + session
            + R"(","tools":["Task","Bash","Glob","Grep","Read","Edit","Write"],"model":"claude-opus-4","permissionMode":"default","slash_commands":["compact","review"],"capabilities":["interrupt_receipt_v1"]})");
        const int rounds = 4 + static_cast<int>(m_random() % 5);
        for (int round = 0; round < rounds; ++round) {
            line(R"({"type":"system","subtype":"status","status":"requesting","session_id":")" + session
                 + R"("})");
            thinking(60);
            text(200);
            toolCall(round);
        }
        text(300);
        line(
            R"({"type":"result","subtype":"success","is_error":false,"duration_ms":48211,"num_turns":9,"result":"끝났습니다.","session_id":")"
            + session
            + R"(","total_cost_usd":0.3127,"usage":{"input_tokens":12,"output_tokens":3411},"modelUsage":{"claude-opus-4":{"inputTokens":12,"outputTokens":3411,"cacheReadInputTokens":91231,"cacheCreationInputTokens":11321,"contextWindow":200000}},"permission_denials":[]})");
    }

private:
    void line(const QByteArray &text)
    {
        m_out += text;
        m_out += '\n';
    }

    QByteArray tail()
    {
        return R"(,"session_id":")" + session
            + R"(","parent_tool_use_id":null,"uuid":"6d0e2f1a-5b1c-4a53-9f0a-)"
            + QByteArray::number(100000000000 + static_cast<qint64>(++m_counter)) + R"("})";
    }

    void thinking(int count)
    {
        for (int i = 0; i < count; ++i) {
            line(
                R"({"type":"stream_event","event":{"type":"content_block_delta","index":0,"delta":{"type":"thinking_delta","thinking":"the second delivery arrives before the row is written; "}})"
                + tail());
            line(R"({"type":"system","subtype":"thinking_tokens","tokens":)" + QByteArray::number(i)
                 + tail());
        }
    }

    void text(int count)
    {
        for (int i = 0; i < count; ++i)
            line(
                QByteArray(
                    R"({"type":"stream_event","event":{"type":"content_block_delta","index":1,"delta":{"type":"text_delta","text":")")
                + deltas[m_random() % std::size(deltas)] + R"("}})" + tail());
    }

    void toolCall(int round)
    {
        const QByteArray id = "toolu_" + QByteArray::number(static_cast<qint64>(++m_counter));
        const int contentLines = m_random() % 40 == 0 ? 20000 : 60;
        QByteArray content;
        for (int i = 0; i < contentLines; ++i)
            content += "    const auto row = store.insertOnce(event.id, \\\"refund\\\"); // 기록\\n";
        if (round % 2 == 0)
            line(
                R"({"type":"assistant","message":{"id":"msg_1","role":"assistant","model":"claude-opus-4","content":[{"type":"tool_use","id":")"
                + id
                + R"(","name":"Write","input":{"file_path":"/home/me/src/billing/src/webhook/cancel_handler.cpp","content":")"
                + content
                + R"("}}],"usage":{"input_tokens":4,"cache_creation_input_tokens":812,"cache_read_input_tokens":48211,"output_tokens":211}})"
                + tail());
        else
            line(
                R"({"type":"assistant","message":{"id":"msg_2","role":"assistant","model":"claude-opus-4","content":[{"type":"tool_use","id":")"
                + id
                + R"(","name":"Bash","input":{"command":"ctest --test-dir build -R cancel","description":"Run the tests"}}]})"
                + tail());
        line(R"({"type":"user","message":{"role":"user","content":[{"type":"tool_result","tool_use_id":")"
             + id + R"(","content":")" + content + R"("}]})" + tail());
    }

    const QByteArray session = "0b9dd2f4-6b4e-4a1c-9c4a-2f8f3a3f7a10";
    QByteArray m_out;
    std::minstd_rand m_random {7};
    quint64 m_counter = 0;
};

} // namespace

QByteArray recordedStream(qsizetype bytes)
{
    Writer writer(bytes);
    while (writer.size() < bytes)
        writer.turn();
    return writer.take();
}

} // namespace Vesk::Bench
