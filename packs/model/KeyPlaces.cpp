#include "packs/model/KeyPlaces.h"

namespace vornic::packs {

namespace {

// Columns in key widths from the left edge of a 15 keys wide board.
KeyPlace at(double column, double row) {
    return {.x = column / 7.5 - 1, .y = row};
}

std::vector<KeyPlace> letters() {
    std::vector<KeyPlace> places;
    places.reserve(26);
    for (int key = 0; key < 10; ++key) {
        places.push_back(at(2 + key, 0.5)); // q to p
    }
    for (int key = 0; key < 9; ++key) {
        places.push_back(at(2.25 + key, 0)); // a to l
    }
    for (int key = 0; key < 7; ++key) {
        places.push_back(at(2.75 + key, -0.5)); // z to m
    }
    return places;
}

// One wide key, struck here and there.
std::vector<KeyPlace> struckAcross(double column, double row, double width) {
    std::vector<KeyPlace> places;
    for (const double part : {-0.3, 0.1, 0.35, -0.1, 0.2, -0.4}) {
        places.push_back(at(column + part * width, row));
    }
    return places;
}

} // namespace

std::vector<KeyPlace> keyPlaces(std::string_view keyClass) {
    if (keyClass == "regular" || keyClass == "release") {
        return letters();
    }
    if (keyClass == "space") {
        return struckAcross(7, -1, 6.25);
    }
    if (keyClass == "enter") {
        return struckAcross(13.9, 0, 1.5);
    }
    if (keyClass == "backspace") {
        return struckAcross(14, 1, 1.5);
    }
    if (keyClass == "modifier") {
        return {at(1, -0.5), at(13.6, -0.5), at(0.6, -1), at(14.4, -1),
                at(3.1, -1), at(10.6, -1),   at(1.9, -1), at(0.9, 0)};
    }
    return {};
}

} // namespace vornic::packs
