// A program without tests: its headers, compiled once, are those of the test programs.
int main() {
    return 0;
}
