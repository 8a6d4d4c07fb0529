// SPDX-License-Identifier: Apache-2.0
#include "runs/WorkerJob.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

#include "files/InputFile.h"
#include "files/WholeWrite.h"
#include "formats/RawFormat.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::json;

constexpr uint64_t kMaxHeadBytes = uint64_t{1} << 20;
constexpr uint64_t kMaxFrameBytes = uint64_t{1} << 30;

std::string FileOf(const std::string& folder, const char* leaf) { return folder + "/" + leaf; }

void WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    WriteWhole(path, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

Json Bytes(const std::string& text) { return Json::binary({text.begin(), text.end()}); }

std::string Text(const Json& bytes) {
    const Json::binary_t& binary = bytes.get_binary();
    return {binary.begin(), binary.end()};
}

Json ReadHead(const std::string& path) {
    try {
        return Json::from_cbor(ReadInputFile(path, kMaxHeadBytes));
    } catch (const Json::exception& error) {
        throw InputError(path, std::string("is no part of a job: ") + error.what());
    }
}

std::vector<uint16_t> ReadPixels(const std::string& path, FrameSize size) {
    return DecodeRaw(ReadInputFile(path, kMaxFrameBytes), size).pixels;
}

// What is no frame and no text.
Json NumbersOf(const ExportRequest& request) {
    Json numbers = {{"kind", static_cast<int>(request.kind)}, {"width", request.frame.width},
                    {"height", request.frame.height},         {"mapping", request.applyMapping},
                    {"spots", request.applySpotCorrection},   {"sensorMode", request.sensorMode}};
    if (request.geometry) numbers["geometry"] = *request.geometry;
    if (request.memoryLimit) numbers["memory"] = *request.memoryLimit;
    return numbers;
}

}  // namespace

void WriteJob(const std::string& folder, const ExportRequest& request) {
    Json head = NumbersOf(request);
    head["profile"] = Bytes(request.profile);
    head["section"] = Bytes(request.section);
    head["bitmap"] = Bytes(request.bitmapPath);
    head["sensorFolder"] = Bytes(request.sensorFolder);
    head["library"] = Bytes(request.library);
    head["instructions"] = Bytes(request.instructions);
    WriteFile(FileOf(folder, "frame"), EncodeRaw(request.frame));
    WriteFile(FileOf(folder, "job"), Json::to_cbor(head));
}

ExportRequest ReadJob(const std::string& folder) {
    const std::string path = FileOf(folder, "job");
    const Json head = ReadHead(path);
    ExportRequest request;
    try {
        request.kind = static_cast<ExportKind>(head.at("kind").get<int>());
        request.frame.width = head.at("width");
        request.frame.height = head.at("height");
        request.applyMapping = head.at("mapping");
        request.applySpotCorrection = head.at("spots");
        request.sensorMode = head.at("sensorMode");
        if (head.contains("geometry")) request.geometry.emplace() = head["geometry"];
        if (head.contains("memory")) request.memoryLimit = head["memory"].get<uint64_t>();
        request.profile = Text(head.at("profile"));
        request.section = Text(head.at("section"));
        request.bitmapPath = Text(head.at("bitmap"));
        request.sensorFolder = Text(head.at("sensorFolder"));
        request.library = Text(head.at("library"));
        request.instructions = Text(head.at("instructions"));
    } catch (const Json::exception& error) {
        throw InputError(path, std::string("is no job: ") + error.what());
    }
    const FrameSize size{request.frame.width, request.frame.height};
    if (!IsUsableSize(size)) throw InputError(path, "is a job without a frame");
    request.frame.pixels = ReadPixels(FileOf(folder, "frame"), size);
    request.output.resize(request.frame.pixels.size());
    return request;
}

void WriteJobResult(const std::string& folder, int32_t code, const ExportRequest& request) {
    Json head = {{"code", code}, {"elapsedMs", request.record.elapsedMs}};
    if (const std::optional<DoseFigures>& dose = request.record.dose)
        head["dose"] = {{"median", dose->objectMedian},
                        {"total", dose->objectTotal},
                        {"low", dose->lowSignal},
                        {"ratio", dose->lowRatio},
                        {"isLow", dose->isLow}};
    WriteFile(FileOf(folder, "output"),
              EncodeRaw({request.frame.width, request.frame.height, request.output}));
    WriteFile(FileOf(folder, "result"), Json::to_cbor(head));
}

int32_t ReadJobResult(const std::string& folder, ExportRequest& request) {
    const std::string path = FileOf(folder, "result");
    const Json head = ReadHead(path);
    request.output = ReadPixels(FileOf(folder, "output"), {request.frame.width, request.frame.height});
    try {
        request.record.elapsedMs = head.at("elapsedMs");
        request.record.dose.reset();
        if (head.contains("dose")) {
            const Json& dose = head["dose"];
            request.record.dose = DoseFigures{dose.at("median"), dose.at("total"), dose.at("low"),
                                              dose.at("ratio"), dose.at("isLow")};
        }
        return head.at("code");
    } catch (const Json::exception& error) {
        throw InputError(path, std::string("is no result: ") + error.what());
    }
}

}  // namespace vastrelline
