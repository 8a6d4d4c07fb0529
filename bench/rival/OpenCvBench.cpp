// SPDX-License-Identifier: Apache-2.0

// What another library needs for the same filters of the same frame on one thread: a yardstick. Its results
// have other bits than ours.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "BenchFrames.h"
#include "operators/separable/GaussKernel.h"

namespace vastrelline {
namespace {

cv::Mat View(BenchFrame& frame) { return {frame.height, frame.width, CV_16UC1, frame.pixels.data()}; }

void BenchGaussianBlur(benchmark::State& state, double sigma) {
    cv::setNumThreads(1);
    const int32_t size = GaussMaskSize(sigma);
    BenchFrame frame = MakeNoiseFrame();
    const cv::Mat source = View(frame);
    cv::Mat result;
    for (auto _ : state) {
        cv::GaussianBlur(source, result, cv::Size(size, size), sigma, sigma, cv::BORDER_REPLICATE);
        benchmark::DoNotOptimize(result.data);
    }
    ReportPixels(state, frame);
}

void BenchMedianBlur(benchmark::State& state, int32_t size) {
    cv::setNumThreads(1);
    BenchFrame frame = MakeNoiseFrame();
    const cv::Mat source = View(frame);
    cv::Mat result;
    for (auto _ : state) {
        cv::medianBlur(source, result, size);
        benchmark::DoNotOptimize(result.data);
    }
    ReportPixels(state, frame);
}

// Times `run(source, result)` on the frame.
template <typename Run>
void BenchOther(benchmark::State& state, const Run& run) {
    cv::setNumThreads(1);
    BenchFrame frame = MakeNoiseFrame();
    const cv::Mat source = View(frame);
    cv::Mat result;
    for (auto _ : state) {
        run(source, result);
        benchmark::DoNotOptimize(result.data);
    }
    ReportPixels(state, frame);
}

template <typename Run>
void Register(const std::string& name, const Run& run) {
    benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
        BenchOther(state, run);
    })->Unit(benchmark::kMillisecond);
}

// Square tiles, as many as lie in the frame.
void RegisterEqualisation(int32_t tile) {
    for (const bool isNarrow : {true, false}) {
        const std::string bits = isNarrow ? "8bit" : "16bit";
        Register("Clahe/opencv/" + bits + "/tile" + std::to_string(tile),
                 [=](const cv::Mat& source, cv::Mat& result) {
                     static cv::Mat narrow;
                     if (isNarrow && narrow.empty()) source.convertTo(narrow, CV_8U, 1.0 / 16);
                     const cv::Size tiles(std::max(source.cols / tile, 1), std::max(source.rows / tile, 1));
                     cv::createCLAHE(1.5, tiles)->apply(isNarrow ? narrow : source, result);
                 });
    }
}

void RegisterPointOperations() {
    Register("PixelRange/opencv", [](const cv::Mat& source, cv::Mat&) {
        double least = 0;
        double most = 0;
        cv::minMaxLoc(source, &least, &most);
        benchmark::DoNotOptimize(most);
    });
    Register("Histogram/opencv", [](const cv::Mat& source, cv::Mat& result) {
        const int32_t levels = 4096;
        const float range[] = {0, 4096};
        const float* ranges[] = {range};
        const int32_t channel = 0;
        cv::calcHist(&source, 1, &channel, cv::Mat(), result, 1, &levels, ranges);
    });
    Register("SaturationCap/opencv",
             [](const cv::Mat& source, cv::Mat& result) { cv::min(source, 4000, result); });
    Register("InvertPixels/opencv",
             [](const cv::Mat& source, cv::Mat& result) { cv::subtract(cv::Scalar(4095), source, result); });
}

void RegisterTurns() {
    Register("Rotation/opencv/90", [](const cv::Mat& source, cv::Mat& result) {
        cv::rotate(source, result, cv::ROTATE_90_CLOCKWISE);
    });
    Register("Rotation/opencv/-90", [](const cv::Mat& source, cv::Mat& result) {
        cv::rotate(source, result, cv::ROTATE_90_COUNTERCLOCKWISE);
    });
    Register("Rotation/opencv/180",
             [](const cv::Mat& source, cv::Mat& result) { cv::rotate(source, result, cv::ROTATE_180); });
    Register("Rotation/opencv/mirror",
             [](const cv::Mat& source, cv::Mat& result) { cv::flip(source, result, 1); });
}

const bool kRegistered = [] {
    for (const int32_t radius : {3, 7, 15})
        Register("BoxMean/opencv/radius" + std::to_string(radius),
                 [=](const cv::Mat& source, cv::Mat& result) {
                     cv::blur(source, result, cv::Size(2 * radius + 1, 2 * radius + 1));
                 });
    for (const char* scale : {"0.5", "2", "3"})
        Register(std::string("Resize/opencv/scale") + scale,
                 [factor = std::stod(scale)](const cv::Mat& source, cv::Mat& result) {
                     cv::resize(source, result, cv::Size(), factor, factor, cv::INTER_LINEAR);
                 });
    Register("SobelMagnitude/opencv", [](const cv::Mat& source, cv::Mat& result) {
        cv::Mat x;
        cv::Mat y;
        cv::Sobel(source, x, CV_32F, 1, 0);
        cv::Sobel(source, y, CV_32F, 0, 1);
        cv::magnitude(x, y, result);
    });
    for (const int32_t tile : {64, 128, 256}) RegisterEqualisation(tile);
    RegisterPointOperations();
    RegisterTurns();
    for (const char* sigma : {"0.5", "1", "3", "6", "15"}) {
        const std::string name = std::string("SeparableFilter/opencv/sigma") + sigma;
        benchmark::RegisterBenchmark(name.c_str(), BenchGaussianBlur, std::stod(sigma))
            ->Unit(benchmark::kMillisecond);
    }
    // It takes no larger windows of 16-bit pixels.
    for (const int32_t size : {3, 5}) {
        const std::string name = "MedianSquare/opencv/" + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(), BenchMedianBlur, size)->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
}  // namespace vastrelline
