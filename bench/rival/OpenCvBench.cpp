// What another library needs for the same filters of the same frame on one thread: a yardstick. Its results
// have other bits than ours.
#include <benchmark/benchmark.h>

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

const bool kRegistered = [] {
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
