#pragma once

#include <sys/types.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <string>
#include <utility>
#include <vector>

namespace dravik {

/// The real program as a child process, asked through its console.
class ConsoleProgram {
 public:
    using Variables = std::vector<std::pair<std::string, std::string>>;

    enum class Display { Windowed, FullScreen };

    /// Starts `program` with --console, --windowed unless asked otherwise, and further arguments.
    explicit ConsoleProgram(const std::vector<std::string>& arguments,
                            const std::string& program = DRAVIK_PROGRAM,
                            const Variables& variables = {}, Display display = Display::Windowed) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : variables)
            environment.insert(QString::fromStdString(name), QString::fromStdString(value));
        process_.setProcessEnvironment(environment);
        QStringList list = {QStringLiteral("--console")};
        if (display == Display::Windowed) list.append(QStringLiteral("--windowed"));
        for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
        process_.start(QString::fromStdString(program), list);
    }

    ~ConsoleProgram() { Finish(); }

    /// Sends requests without waiting for their answers.
    void Send(const std::string& lines) { process_.write(lines.c_str()); }

    std::string ReadLine() {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(kLimit)) return "(no answer)";
        }
        std::string line = process_.readLine().toStdString();
        while (line.ends_with('\n') || line.ends_with('\r')) line.pop_back();
        return line;
    }

    /// The answer of a request that answers with one line.
    std::string Ask(const std::string& request) {
        Send(request + "\n");
        return ReadLine();
    }

    /// The answer of a request that answers with several, without the closing ".".
    std::vector<std::string> AskLines(const std::string& request) {
        std::vector<std::string> lines = {Ask(request)};
        while (lines.back() != "." && lines.back() != "(no answer)") lines.push_back(ReadLine());
        lines.pop_back();
        return lines;
    }

    /// One item of `state`.
    std::string State(const std::string& name) {
        for (const std::string& line : AskLines("state")) {
            if (line.starts_with(name + " ")) return line.substr(name.size() + 1);
        }
        return "(no such item)";
    }

    /// Asks again and again until the answer is `wanted`; the last answer otherwise.
    template <typename Question>
    std::string Until(Question question, const std::string& wanted) {
        constexpr int kRounds = 600;
        std::string answer;
        for (int i = 0; i < kRounds; ++i) {
            answer = question();
            if (answer == wanted || answer == "(no answer)") break;
            Ask("wait 50");
        }
        return answer;
    }

    /// Ends the input and waits for the program; its exit status, -1 when it crashed.
    int Finish() {
        process_.closeWriteChannel();
        return WaitForEnd();
    }

    /// Waits for a program that has been told to end in another way.
    int WaitForEnd() {
        if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(kLimit)) {
            process_.kill();
            process_.waitForFinished();
        }
        return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }

    std::string Output() { return process_.readAllStandardOutput().toStdString(); }
    std::string ErrorOutput() { return process_.readAllStandardError().toStdString(); }
    pid_t Pid() const { return static_cast<pid_t>(process_.processId()); }

 private:
    static constexpr int kLimit = 60'000;  // milliseconds; only ends a test that has failed already
    QProcess process_;
};

}  // namespace dravik
