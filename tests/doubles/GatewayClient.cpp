#include "GatewayClient.h"

#include "Folders.h"
#include "channel/ChannelNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace solvane {

namespace {

// Filled in before each command, to see what the unit writes.
constexpr char untouched = '\xcc';
constexpr DWORD patience = 10000;

/// `image` with `bytes` at its beginning.
std::string overlaid(std::string image, const std::string& bytes) {
    return image.replace(0, bytes.size(), bytes);
}

} // namespace

std::string unitIdOf(const std::wstring& workingFolder) {
    const std::string script = readFile(workingFolder + L"initRun.m");
    const std::string before = "unit_ID='";
    const std::size_t begin = script.find(before);
    if (begin == std::string::npos)
        return {};
    return script.substr(begin + before.size(),
                         script.find('\'', begin + before.size()) - begin - before.size());
}

GatewayClient::GatewayClient(const std::wstring& workingFolder) {
    const std::string id = unitIdOf(workingFolder);
    mapping_.reset(OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, id.c_str()));
    requestEvent_.reset(OpenEventA(EVENT_MODIFY_STATE, FALSE, requestEventName(id).c_str()));
    replyEvent_.reset(OpenEventA(SYNCHRONIZE, FALSE, replyEventName(id).c_str()));
    if (mapping_)
        view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
    MEMORY_BASIC_INFORMATION region{};
    if (view_)
        VirtualQuery(view_.get(), &region, sizeof region);
    size_ = region.RegionSize;
    if (!view_ || !requestEvent_ || !replyEvent_)
        ADD_FAILURE() << "the unit's channel can't be opened by the id \"" << id << '"';
}

void GatewayClient::send(std::string_view command) {
    if (!isOpen())
        return;
    std::fill_n(static_cast<char*>(view_.get()), size_, untouched);
    std::memcpy(view_.get(), command.data(), command.size());
    SetEvent(requestEvent_.get());
}

bool GatewayClient::receive(std::string& block) {
    if (!isOpen())
        return false;
    const bool isAnswered = WaitForSingleObject(replyEvent_.get(), patience) == WAIT_OBJECT_0;
    block.assign(static_cast<const char*>(view_.get()), size_);
    return isAnswered;
}

std::string GatewayClient::call(const Wire& command) {
    std::string block;
    send(command);
    if (!receive(block) && isOpen())
        ADD_FAILURE() << "the unit did not answer";
    return block;
}

void GatewayClient::expect(const Wire& command, const Wire& reply, std::source_location where) {
    const std::string before = overlaid(std::string(size_, untouched), command.bytes());
    const std::string wanted = overlaid(before, reply.bytes());
    const std::string block = call(command);
    if (block == wanted)
        return;
    const auto difference = std::mismatch(block.begin(), block.end(), wanted.begin(), wanted.end());
    const auto offset = static_cast<std::size_t>(difference.first - block.begin());
    const std::size_t shown = std::max<std::size_t>(reply.bytes().size(), 80);
    ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
        << "the reply differs at byte " << offset << "\n     is "
        << testing::PrintToString(block.substr(0, shown)) << "\n wanted "
        << testing::PrintToString(wanted.substr(0, shown));
}

std::size_t GatewayClient::blockSize() {
    const std::string block = call(request(CommandCode::setReport) << std::string(size_ - 8, 'x'));
    const std::size_t end = block.find('\0', sizeof(std::uint32_t));
    return end == std::string::npos ? 0 : end + 1;
}

} // namespace solvane
