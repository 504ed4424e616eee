#pragma once

#include <tav/Export.h>

#include <BRIX/BaseMsgID.h>

#include <string>

// User messages: severity-tagged, catalogued texts for the person at the
// host, delivered to a stream without throwing.
namespace UserMessage {

enum Severity { Error = 0, Warning = 1, Info = 2 };

// Where a message comes from; empty unless the caller names it.
class TAV_EXPORT Source {
public:
    Source() = default;
    Source(std::string name) : fName(std::move(name)) {}
    Source(const char* name) : fName(name) {}
    const std::string& name() const { return fName; }

private:
    std::string fName;
};

struct Message {
    int severity;
    std::string id;
    std::string source;
    std::u16string text;
    std::string product;
};

class TAV_EXPORT MessageStream {
public:
    virtual ~MessageStream();
    virtual void message(const Message& record) = 0;
};

// Errors to the console's error stream, warnings and information to its
// output stream, one line each: "[UM:Error] : <product> : <id> : <text>".
class TAV_EXPORT DefaultMessageStream : public MessageStream {
public:
    void message(const Message& record) override;
};

} // namespace UserMessage

TAV_EXPORT void tavError(const UserMessage::Source& source, const BRIX::BaseMsgID& message);
TAV_EXPORT void tavWarning(const UserMessage::Source& source, const BRIX::BaseMsgID& message);
TAV_EXPORT void tavInfo(const UserMessage::Source& source, const BRIX::BaseMsgID& message);
TAV_EXPORT void tavError(const BRIX::BaseMsgID& message);
TAV_EXPORT void tavWarning(const BRIX::BaseMsgID& message);
TAV_EXPORT void tavInfo(const BRIX::BaseMsgID& message);

// Null restores the default stream. The stream is not owned.
TAV_EXPORT void tavSetMessageStream(UserMessage::MessageStream* stream);
TAV_EXPORT UserMessage::MessageStream* tavGetMessageStream();

// The product named in every message; "QRD" until set.
TAV_EXPORT void tavSetProduct(const std::string& product);

namespace tavmsg {

// For callers that already have the text: no catalogue is consulted.
TAV_EXPORT void pushError(const std::string& source, const std::string& id, const std::u16string& text);
TAV_EXPORT void pushWarning(const std::string& source, const std::string& id, const std::u16string& text);
TAV_EXPORT void pushInfo(const std::string& source, const std::string& id, const std::u16string& text);

// The catalogue text of "<catalogue>:<key>", placeholders left in.
TAV_EXPORT std::u16string getMessageStringFromId(const std::string& id);

// The identifier as shown: without "tav:messages:", its first ':' or '_'
// and every later ':' turned into blanks.
TAV_EXPORT std::string cleanId(const std::string& id);

} // namespace tavmsg
