// What somebody could have loaded into a program: it only has to be there.
extern "C" int vornicForeignCode() {
    return 1;
}
