#include "VornicCore/keys/KeyLayout.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vornic::KeyLayout {

namespace {

constexpr double standardWidth = 14.5;
/// How far the outermost keys go to the side.
constexpr double reach = 0.85;

struct Column {
    std::int64_t code;
    double middle;
};

constexpr std::array<Column, 66> columns{{
    {50, 0},     {18, 1},    {19, 2},     {20, 3},     {21, 4},     {23, 5},     {22, 6},
    {26, 7},     {28, 8},    {25, 9},     {29, 10},    {27, 11},    {24, 12},    {51, 13.5},
    {48, 0.5},   {12, 1.5},  {13, 2.5},   {14, 3.5},   {15, 4.5},   {17, 5.5},   {16, 6.5},
    {32, 7.5},   {34, 8.5},  {31, 9.5},   {35, 10.5},  {33, 11.5},  {30, 12.5},  {42, 13.5},
    {0, 1.75},   {1, 2.75},  {2, 3.75},   {3, 4.75},   {5, 5.75},   {4, 6.75},   {38, 7.75},
    {40, 8.75},  {37, 9.75}, {41, 10.75}, {39, 11.75}, {36, 13.25}, {6, 2.25},   {7, 3.25},
    {8, 4.25},   {9, 5.25},  {11, 6.25},  {45, 7.25},  {46, 8.25},  {43, 9.25},  {47, 10.25},
    {44, 11.25}, {49, 6.5},  {123, 12.5}, {124, 14.5}, {125, 13.5}, {126, 13.5}, {117, 14.0},
    {57, 0.9},   {56, 1.1},  {60, 13.4},  {63, 0.5},   {59, 1.5},   {58, 2.5},   {55, 3.6},
    {54, 9.4},   {61, 10.5}, {62, 11.4},
}};

// Indexed by key code, so that a key press costs no search.
constexpr auto columnOfCode = [] {
    std::array<std::optional<double>, 128> table{};
    for (const Column& column : columns) {
        table[static_cast<std::size_t>(column.code)] = column.middle;
    }
    return table;
}();

float panAt(double middle, double boardWidth, double width) {
    const double p = middle / boardWidth - 0.5;
    return static_cast<float>(2 * p * reach * std::clamp(width, 0.0, 1.0));
}

} // namespace

std::optional<double> column(std::int64_t keyCode) {
    if (keyCode < 0 || keyCode >= static_cast<std::int64_t>(columnOfCode.size())) {
        return std::nullopt;
    }
    return columnOfCode[static_cast<std::size_t>(keyCode)];
}

float rate(std::int64_t keyCode) {
    const std::uint64_t hash = static_cast<std::uint64_t>(keyCode) * 0x9E3779B9U;
    const auto step = static_cast<int>((hash >> 7U) % 9) - 4;
    return 1.0F + static_cast<float>(step) * 0.004F;
}

float pan(std::int64_t keyCode, double width) {
    const std::optional<double> middle = column(keyCode);
    return middle ? panAt(*middle, standardWidth, width) : 0.0F;
}

float pan(std::int64_t keyCode, double width, const KeyboardLayout& layout) {
    const LayoutKey* const key = layout.find(keyCode);
    return key != nullptr ? panAt(key->centreX(), layout.width, width) : pan(keyCode, width);
}

} // namespace vornic::KeyLayout
