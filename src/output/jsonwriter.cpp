#include "jsonwriter.h"

#include <charconv>
#include <cmath>

namespace {

class Writer
{
public:
    bool write(const JsonValue &value, int depth)
    {
        return std::visit([&](const auto &v) { return put(v, depth); }, value.storage());
    }

    QByteArray out;

private:
    void indent(int depth) { out.append(QByteArray(2 * depth, ' ')); }

    bool put(std::nullptr_t, int)
    {
        out.append("null");
        return true;
    }
    bool put(bool v, int)
    {
        out.append(v ? "true" : "false");
        return true;
    }
    bool put(qint64 v, int)
    {
        out.append(QByteArray::number(v));
        return true;
    }
    bool put(double v, int)
    {
        if (!std::isfinite(v))
            return false;
        char buffer[32];
        const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, v);
        if (ec != std::errc())
            return false;
        out.append(buffer, end - buffer);
        return true;
    }
    bool put(const QString &v, int)
    {
        putString(v);
        return true;
    }
    bool put(const JsonValue::Array &array, int depth)
    {
        if (array.isEmpty()) {
            out.append("[]");
            return true;
        }
        out.append("[\n");
        for (qsizetype i = 0; i < array.size(); ++i) {
            indent(depth + 1);
            if (!write(array[i], depth + 1))
                return false;
            out.append(i + 1 < array.size() ? ",\n" : "\n");
        }
        indent(depth);
        out.append(']');
        return true;
    }
    bool put(const JsonValue::Object &object, int depth)
    {
        if (object.empty()) {
            out.append("{}");
            return true;
        }
        out.append("{\n");
        size_t i = 0;
        for (const auto &[key, value] : object) {
            indent(depth + 1);
            putString(key);
            out.append(" : ");
            if (!write(value, depth + 1))
                return false;
            out.append(++i < object.size() ? ",\n" : "\n");
        }
        indent(depth);
        out.append('}');
        return true;
    }

    void putString(const QString &text)
    {
        out.append('"');
        const QByteArray utf8 = text.toUtf8();
        for (const char c : utf8) {
            const auto byte = static_cast<unsigned char>(c);
            switch (byte) {
            case '"':
                out.append("\\\"");
                break;
            case '\\':
                out.append("\\\\");
                break;
            case '\b':
                out.append("\\b");
                break;
            case '\f':
                out.append("\\f");
                break;
            case '\n':
                out.append("\\n");
                break;
            case '\r':
                out.append("\\r");
                break;
            case '\t':
                out.append("\\t");
                break;
            default:
                if (byte < 0x20) {
                    static const char hex[] = "0123456789abcdef";
                    out.append("\\u00");
                    out.append(hex[byte >> 4]);
                    out.append(hex[byte & 0xF]);
                } else {
                    out.append(c);
                }
            }
        }
        out.append('"');
    }
};

} // namespace

Result<QByteArray> encodeJson(const JsonValue &value)
{
    Writer writer;
    if (!writer.write(value, 0))
        return Error{Error::Kind::Invalid,
                     QStringLiteral("A number cannot be written as JSON (not finite)"), {}, 0};
    return writer.out;
}
