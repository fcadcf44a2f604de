// The hands and eyes of a person at a display: reads commands, one a line, and answers each with one line of JSON.
//
//   move X Y | press BUTTON | release BUTTON | key CODE down|up
//   storm WINDOW SEED EVENTS | arrange WINDOW X Y WIDTH HEIGHT
//   where WINDOW | look WINDOW | picture FILE X Y WIDTH HEIGHT | pixel X Y
//   empty | frame FILE [drawn]
//   cursor | shape NAME | cover X Y WIDTH HEIGHT | destroy WINDOW
//   resources TEXT | states WINDOW | minimum WINDOW | count | manager
#include "FrameSight.h"
#include "Storm.h"
#include "User.h"

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

std::string Text(const Place& place) {
    std::ostringstream text;
    text << R"("x":)" << place.x << R"(,"y":)" << place.y << R"(,"width":)" << place.width << R"(,"height":)"
         << place.height;
    return text.str();
}

/// A row or column of pixels as [colour, length] pairs.
std::string Runs(const Picture& line) {
    std::ostringstream text;
    text << '[';
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= line.pixels.size(); ++i) {
        if (i < line.pixels.size() && line.pixels[i] == line.pixels[begin]) continue;
        if (begin > 0) text << ',';
        text << '[' << line.pixels[begin] << ',' << i - begin << ']';
        begin = i;
    }
    text << ']';
    return text.str();
}

void Save(const Picture& picture, const std::string& file) {
    std::ofstream out(file, std::ios::binary);
    out << "P6\n" << picture.width << ' ' << picture.height << "\n255\n";
    for (const std::uint32_t pixel : picture.pixels) {
        out.put(static_cast<char>(pixel >> 16)).put(static_cast<char>(pixel >> 8)).put(static_cast<char>(pixel));
    }
    if (!out.flush()) throw std::runtime_error("the picture could not be written");
}

/// Geometry, the middle row and the middle column of a window, all of one moment.
std::string Look(User& user, xcb_window_t window) {
    const auto still = user.HoldStill();
    const Place place = user.Where(window);
    const Picture row = user.See({place.x, place.y + place.height / 2, place.width, 1});
    const Picture column = user.See({place.x + place.width / 2, place.y, 1, place.height});
    return Text(place) + R"(,"row":)" + Runs(row) + R"(,"column":)" + Runs(column);
}

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

/// What the screen shows of a frame. A picture that is not right is saved.
std::string Sight(const Picture& screen, const std::string& file, Client client) {
    static Picture empty;  // the screen without a window
    if (file.empty()) return empty = screen, "";
    const FrameSight sight = SeeFrame(screen, empty, client);
    if (!sight.fault.empty()) Save(screen, file);
    return Text(sight.place) + R"(,"shaded":{)" + Text(sight.shaded) + R"(},"fault":)" + Quoted(sight.fault);
}

Place ReadPlace(std::istream& words) {
    Place place;
    words >> place.x >> place.y >> place.width >> place.height;
    return place;
}

std::string StormText(const StormCounts& counts) {
    std::ostringstream text;
    text << R"("moves":)" << counts.moves << R"(,"buttons":)" << counts.buttons << R"(,"keys":)" << counts.keys;
    return text.str();
}

std::string Answer(User& user, const std::string& command, std::istream& words) {
    if (command == "picture") {
        std::string file;
        words >> file;
        Save(user.See(ReadPlace(words)), file);
        return "";
    }
    if (command == "empty" || command == "frame") {
        std::string file;
        std::string client;
        words >> file >> client;
        return Sight(user.See(user.Screen()), file, client == "drawn" ? Client::Drawn : Client::Plain);
    }
    if (command == "cover") return R"("window":)" + std::to_string(user.Cover(ReadPlace(words)));
    if (command == "cursor") return R"("shape":)" + Quoted(user.CursorShape());
    if (command == "shape") {
        std::string name;
        words >> name;
        return R"("shape":)" + Quoted(user.ShapeNamed(name));
    }
    if (command == "resources") {
        std::string text;
        std::getline(words >> std::ws, text);
        user.SetResources(text + "\n");
        return "";
    }
    if (command == "count") {
        return R"("clients":)" + std::to_string(user.Clients()) + R"(,"windows":)" + std::to_string(user.Windows());
    }
    if (command == "manager") return std::string(R"("ready":)") + (user.WaitForManager() ? "true" : "false");

    int first = 0;
    words >> first;
    const auto window = static_cast<xcb_window_t>(first);
    if (command == "press" || command == "release") return user.Button(first, command == "press"), "";
    if (command == "where") return Text(user.Where(window));
    if (command == "look") return Look(user, window);
    if (command == "destroy") return user.Destroy(window), "";
    if (command == "minimum") return Text(user.MinimumSizeOf(window));
    if (command == "states") {
        std::string list;
        for (const std::string& state : user.StatesOf(window)) list += (list.empty() ? "" : ",") + Quoted(state);
        return R"("states":[)" + list + "]";
    }
    if (command == "arrange") return user.Arrange(window, ReadPlace(words)), "";
    if (command == "storm") {
        std::uint64_t seed = 0;
        int events = 0;
        words >> seed >> events;
        return StormText(Storm(user, seed, events, window));
    }
    if (command == "key") {
        std::string direction;
        words >> direction;
        return user.Key(first, direction == "down"), "";
    }
    int second = 0;
    words >> second;
    if (command == "move") return user.MovePointer(first, second), "";
    if (command == "pixel") return R"("colour":)" + std::to_string(user.See({first, second, 1, 1}).pixels.at(0));
    throw std::runtime_error("unknown command");
}

}  // namespace

int main() {
    try {
        User user;
        std::string line;
        while (std::getline(std::cin, line)) {
            std::istringstream words(line);
            std::string command;
            words >> command;
            try {
                const std::string answer = Answer(user, command, words);
                std::cout << '{' << answer << '}' << std::endl;
            } catch (const std::exception& failure) {
                std::cout << R"({"error":)" << Quoted(failure.what()) << "}" << std::endl;
            }
        }
    } catch (const std::exception& failure) {
        std::cerr << "display_user: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
