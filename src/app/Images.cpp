// SPDX-License-Identifier: Apache-2.0
#include "app/Images.h"

namespace zov::app {
namespace {

constexpr ui::SImageOutline kOutlines[] = {
    {"about", "O 12 12 9 M 12 11 L 12 17 O 12 7.5 0.6"},
    {"add", "M 12 5 L 12 19 M 5 12 L 19 12"},
    {"archive", "R 3 4 18 4 M 5 8 L 5 20 L 19 20 L 19 8 M 10 12 L 14 12"},
    {"assign", "R 3 8 7 8 R 14 8 7 8 M 10 12 L 14 12"},
    {"browse", "M 3 6 L 10 6 L 12 8 L 21 8 L 21 19 L 3 19 Z O 14 14 2.5 M 16 16 L 18 18"},
    {"collapse", "R 4 4 16 16 M 8 12 L 16 12"},
    {"collection", "M 3 6 L 9 6 L 11 8 L 21 8 L 21 19 L 3 19 Z"},
    {"copy", "R 8 8 12 12 M 16 8 L 16 4 L 4 4 L 4 16 L 8 16"},
    {"create", "R 4 7 12 12 M 18 3 L 18 9 M 15 6 L 21 6"},
    {"cursor", "M 6 3 L 18 13 L 12 13.5 L 15 20 L 12.5 21 L 9.8 14.5 L 6 18 Z"},
    {"convert", "M 4 8 L 17 8 M 14 5 L 17 8 L 14 11 M 20 16 L 7 16 M 10 13 L 7 16 L 10 19"},
    {"dark", "M 19 14 C 13 17 7 12 10 5 C 4 7 3 14 7 18 C 11 22 18 20 19 14 Z"},
    {"delete", "M 5 7 L 19 7 M 10 7 L 10 4 L 14 4 L 14 7 M 7 7 L 8 20 L 16 20 L 17 7"},
    {"down", "M 12 5 L 12 19 M 6 13 L 12 19 L 18 13"},
    {"editor", "M 4 20 L 5 15 L 16 4 L 20 8 L 9 19 Z M 13 7 L 17 11"},
    {"exit", "M 14 4 L 4 4 L 4 20 L 14 20 M 10 12 L 21 12 M 17 8 L 21 12 L 17 16"},
    {"expand", "R 4 4 16 16 M 8 12 L 16 12 M 12 8 L 12 16"},
    {"explore",
     "M 3 6 L 9 6 L 11 8 L 21 8 L 21 19 L 3 19 Z M 12 17 L 12 11 M 9 14 L 12 11 L 15 14"},
    {"export", "M 5 13 L 5 20 L 19 20 L 19 13 M 12 15 L 12 4 M 8 8 L 12 4 L 16 8"},
    {"external", "R 3 5 6 14 R 9 5 5 14 M 15 6 L 18 5 L 21 18 L 18 19 Z"},
    {"filter", "M 4 5 L 20 5 L 14 12 L 14 19 L 10 17 L 10 12 Z"},
    {"find", "O 10 10 6 M 14.5 14.5 L 20 20"},
    {"help", "O 12 12 9 M 9.5 9.5 C 9.5 6 14.5 6 14.5 9.5 C 14.5 12 12 11.5 12 14 O 12 17 0.6"},
    {"import", "M 5 13 L 5 20 L 19 20 L 19 13 M 12 4 L 12 15 M 8 11 L 12 15 L 16 11"},
    {"library", "R 4 4 5 16 R 9 4 5 16 M 15 5 L 18 4 L 21 19 L 18 20 Z"},
    {"light",
     "O 12 12 4 M 12 3 L 12 5 M 12 19 L 12 21 M 3 12 L 5 12 M 19 12 L 21 12 M 5.6 5.6 L 7 7 "
     "M 17 17 L 18.4 18.4 M 5.6 18.4 L 7 17 M 17 7 L 18.4 5.6"},
    {"map-in",
     "R 4 4 16 16 M 4 10 L 20 10 M 10 4 L 10 20 M 15 12 L 15 18 M 12.5 15.5 L 15 18 L 17.5 15.5"},
    {"map-out",
     "R 4 4 16 16 M 4 10 L 20 10 M 10 4 L 10 20 M 15 18 L 15 12 M 12.5 14.5 L 15 12 L 17.5 14.5"},
    {"new", "M 6 3 L 14 3 L 19 8 L 19 21 L 6 21 Z M 14 3 L 14 8 L 19 8"},
    {"next", "O 9 9 5 M 13 13 L 16 16 M 15 20 L 18 20 L 21 17 M 18 14 L 21 17 L 18 20"},
    {"open", "M 3 19 L 3 6 L 9 6 L 11 8 L 18 8 L 18 11 M 3 19 L 6 11 L 22 11 L 19 19 Z"},
    {"options",
     "M 4 7 L 13 7 M 17 7 L 20 7 O 15 7 2 M 4 12 L 6 12 M 10 12 L 20 12 O 8 12 2 M 4 17 L 13 17 "
     "M 17 17 L 20 17 O 15 17 2"},
    {"output", "R 3 5 18 14 M 6 9 L 9 12 L 6 15 M 11 15 L 16 15"},
    {"play", "M 7 4 L 19 12 L 7 20 Z"},
    {"previous", "O 15 9 5 M 11 13 L 8 16 M 3 17 L 6 14 M 3 17 L 6 20 M 3 17 L 9 20"},
    {"project", "R 3 4 18 14 M 8 21 L 16 21 M 12 18 L 12 21"},
    {"record", "O 12 12 7 F"},
    {"redo", "M 15 4 L 20 9 L 15 14 M 20 9 L 9 9 C 2 9 2 19 9 19 L 14 19"},
    {"refresh",
     "M 19 8 C 16 3 8 3 5 9 M 19 4 L 19 8 L 15 8 M 5 16 C 8 21 16 21 19 15 M 5 20 L 5 16 L 9 16"},
    {"rename", "M 4 20 L 20 20 M 6 16 L 7 12 L 15 4 L 18 7 L 10 15 Z"},
    {"save", "M 4 4 L 16 4 L 20 8 L 20 20 L 4 20 Z M 8 4 L 8 9 L 15 9 L 15 4 R 7 13 10 7"},
    {"save-as",
     "M 4 4 L 15 4 L 18 7 L 18 11 M 4 4 L 4 20 L 11 20 M 8 4 L 8 9 L 14 9 L 14 4 M 13 21 L 14 18 L "
     "20 12 L 22 14 L 16 20 Z"},
    {"speed", "M 4 17 C 4 6 20 6 20 17 M 12 17 L 16 11"},
    {"stop", "R 6 6 12 12"},
    {"undo", "M 9 4 L 4 9 L 9 14 M 4 9 L 15 9 C 22 9 22 19 15 19 L 10 19"},
    {"tb24_zovReplay", "R 3 5 18 14 O 8 12 2 F M 13 9 L 18 12 L 13 15 Z"},
    {"up", "M 12 19 L 12 5 M 6 11 L 12 5 L 18 11"},
    {"velda", "R 4 4 16 6 R 4 14 16 6 O 8 7 0.6 O 8 17 0.6"},
    {"view", "M 2 12 C 6 5 18 5 22 12 C 18 19 6 19 2 12 Z O 12 12 3"},
};

} // namespace

const ui::CQtImageList& Images()
{
    static const ui::CQtImageList images(kOutlines);
    return images;
}

} // namespace zov::app
