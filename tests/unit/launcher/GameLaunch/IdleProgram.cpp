// Does nothing for a minute, so that it can't outlive a test that went wrong for long.
#include <chrono>
#include <thread>

int main() {
    std::this_thread::sleep_for(std::chrono::minutes(1));
}
