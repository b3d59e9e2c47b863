#include "VornicCore/effects/RoomPreset.h"

namespace vornic {

namespace {

// A box room of 2.7 x 3.1 x 2.4 m, the desk against a wall: early, close and short.
constexpr RoomPreset smallRoom{
    .mix = 0.06,
    .decay = 0.24,
    .highDecay = 0.17,
    .lowPassHz = 12000.0,
    .left = {{{2.37, 0.369},
              {5.28, 0.323},
              {6.35, 0.194},
              {6.91, 0.105, true},
              {7.21, 0.141},
              {8.90, 0.155},
              {10.84, 0.101},
              {11.87, 0.117}}},
    .right = {{{2.37, 0.369},
               {5.78, 0.121, true},
               {6.40, 0.280},
               {6.71, 0.093},
               {7.27, 0.197},
               {9.68, 0.147},
               {10.84, 0.101},
               {11.87, 0.117}}},
    .earlyShare = 0.5,
    .delays = {163, 179, 197, 223, 241, 263, 283, 311, 337, 359, 389, 421, 449, 487, 523, 571},
    .leftDiffusers = {61, 103, 173},
    .rightDiffusers = {71, 89, 157},
    .earlyEnergy = 0.2152,
    .lateEnergy = 0.8319,
};

// A treated room of 3.9 x 4.8 x 2.7 m: later reflections, a longer and darker tail.
constexpr RoomPreset mediumRoom{
    .mix = 0.09,
    .decay = 0.42,
    .highDecay = 0.25,
    .lowPassHz = 9000.0,
    .left = {{{4.93, 0.219},
              {8.07, 0.151},
              {8.40, 0.213},
              {10.07, 0.095},
              {10.63, 0.068, true},
              {12.34, 0.106},
              {12.58, 0.078},
              {19.14, 0.072}}},
    .right = {{{4.93, 0.219},
               {8.07, 0.151},
               {8.91, 0.079, true},
               {10.12, 0.183},
               {11.82, 0.115},
               {12.58, 0.078},
               {13.64, 0.099},
               {19.14, 0.072}}},
    .earlyShare = 0.4,
    .delays = {293, 331, 367, 401, 443, 479, 521, 569, 613, 661, 709, 769, 827, 887, 953, 1031},
    .leftDiffusers = {83, 149, 263},
    .rightDiffusers = {97, 131, 239},
    .earlyEnergy = 0.0759,
    .lateEnergy = 0.5829,
};

// A panelled chamber of 4.8 x 6.5 x 2.6 m: later and weaker reflections, a long warm tail.
constexpr RoomPreset mediumChamber{
    .mix = 0.08,
    .decay = 0.70,
    .highDecay = 0.36,
    .lowPassHz = 7000.0,
    .left = {{{7.49, 0.182},
              {10.69, 0.198},
              {12.00, 0.105},
              {12.45, 0.119},
              {13.52, 0.062, true},
              {13.73, 0.127},
              {15.18, 0.085},
              {17.14, 0.100}}},
    .right = {{{7.49, 0.182},
               {11.21, 0.074, true},
               {12.00, 0.105},
               {12.45, 0.119},
               {13.00, 0.167},
               {15.18, 0.085},
               {15.65, 0.115},
               {18.74, 0.094}}},
    .earlyShare = 0.25,
    .delays = {439, 491, 547, 601, 661, 719, 787, 859, 929, 1009, 1091, 1181, 1277, 1381, 1487,
               1607},
    .leftDiffusers = {107, 211, 373},
    .rightDiffusers = {127, 193, 347},
    .earlyEnergy = 0.0527,
    .lateEnergy = 0.5037,
};

} // namespace

const RoomPreset& roomPreset(Room room) VORNIC_REALTIME {
    switch (room) {
    case Room::studio:
        return mediumRoom;
    case Room::wood:
        return mediumChamber;
    case Room::dry:
    case Room::desk:
        break;
    }
    return smallRoom;
}

} // namespace vornic
