// Where the headers that tests share are compiled.
int main() {}
