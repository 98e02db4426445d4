#include "obd/Reply.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "obd/ReplyFrames.h"

namespace dravik {
namespace {

constexpr const char* kEnds[] = {"unfinished", "fault",    "?",      "unreadable",
                                 "refused",    "answered", "no data"};

std::string Hex(unsigned number, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, number);
    return text;
}

/// "answered 7E8:43010420 -10:22": the end, the messages, and refusals with their reasons.
std::string Shown(const Reply& reply) {
    std::string text = kEnds[static_cast<int>(reply.End)];
    for (const UnitMessage& message : reply.Messages) {
        text += " " + Hex(message.Unit, 1) + ":";
        for (const unsigned byte : message.Data) text += Hex(byte, 2);
    }
    for (const Refusal& refusal : reply.Refusals)
        text += " -" + Hex(refusal.Unit, 1) + ":" + Hex(refusal.Reason, 2);
    return text;
}

struct Row {
    const char* What;
    const char* Request;
    const char* Reply;
    const char* Result;
};

void Check(Bus bus, bool headers, const std::vector<Row>& rows) {
    for (const auto& [what, request, reply, result] : rows) {
        SCOPED_TRACE(what);
        const Bytes bytes = BytesOf(request).value_or(Bytes{});
        EXPECT_EQ(Shown(TakeApart(reply, bytes, bus, headers)), result);
        std::string closeUp = reply;  // as an interface sends it that leaves out the blanks
        std::erase(closeUp, ' ');
        EXPECT_EQ(Shown(TakeApart(closeUp, bytes, bus, headers)), result) << "without blanks";
    }
}

TEST(Reply, CanFramesAreAssembledByUnit) {
    Check(
        Bus::Can11, true,
        {
            {"one code, padding", "03", "7E8 04 43 01 04 20 00 00 00 \r\r>",
             "answered 7E8:43010420"},
            {"padding with other bytes, or none", "03",
             "7E8 02 43 00 AA AA AA AA AA \r7E9 02 43 00\r\r>", "answered 7E8:4300 7E9:4300"},
            {"four codes in two frames", "03",
             "7E8 10 0A 43 04 01 33 02 45 \r7E8 21 01 23 04 56 55 55 55 \r\r>",
             "answered 7E8:43040133024501230456"},
            {"two units, their frames in turns", "03",
             "7E8 10 0A 43 04 01 33 02 45 \r7E9 10 08 43 03 07 00 07 01 \r"
             "7E9 21 07 02 00 00 00 00 00 \r7EA 02 43 00\r7E8 21 01 23 04 56 00 00 00 \r\r>",
             "answered 7E9:4303070007010702 7EA:4300 7E8:43040133024501230456"},
            {"a lost frame: the other unit's message stays", "03",
             "7E8 10 14 43 09 01 01 01 02 \r7E9 04 43 01 07 00\r7E8 22 01 06 01 07 01 08 01 \r\r>",
             "unreadable 7E9:43010700"},
            {"the last frame lost", "03",
             "7E8 10 14 43 09 01 01 01 02 \r7E8 21 01 03 01 04 01 05 01 \r\r>", "unreadable"},
            {"a doubled frame", "03",
             "7E8 10 14 43 09 01 01 01 02 \r7E8 21 01 03 01 04 01 05 01 \r"
             "7E8 21 01 03 01 04 01 05 01 \r7E8 22 06 01 07 01 08 01 09 \r\r>",
             "unreadable"},
            {"the last frame doubled", "03",
             "7E8 10 08 43 03 01 01 01 02 \r7E8 21 01 03\r7E8 21 01 03\r\r>", "unreadable"},
            {"the first frame lost", "03", "7E8 21 01 23 04 56 00 00 00 \r\r>", "unreadable"},
            {"the first frame doubled", "03",
             "7E8 10 08 43 03 01 01 01 02 \r7E8 10 08 43 03 01 01 01 02 \r7E8 21 01 03\r\r>",
             "unreadable"},
            {"a frame cut short", "03", "7E8 10 08 43 03 01 01 01 \r7E8 21 02 01 03\r\r>",
             "unreadable"},
            {"a single frame cut short", "03", "7E8 06 43 02 01 33\r\r>", "unreadable"},
            {"a length that no single frame has", "03", "7E8 08 43 03 01 33 01 34 01 35\r\r>",
             "unreadable"},
            {"half a byte", "03", "7E8 04 43 01 04 2\r\r>", "unreadable"},
            {"an address that no unit has", "03", "6E8 04 43 01 04 20\r\r>", "unreadable"},
            {"the answer to something else is passed over", "010C",
             "7E9 03 41 0D 00\r7E8 04 41 0C 1A F8\r\r>", "answered 7E8:410C1AF8"},
            {"nothing but that", "010C", "7E9 03 41 0D 00\r\r>", "unreadable"},
            {"of a freeze frame the number counts", "020C01",
             "7E8 05 42 0C 00 00 01\r7E9 05 42 0C 01 1A F8\r\r>", "answered 7E9:420C011AF8"},
            {"one refuses, one answers", "03", "7E9 03 7F 03 11\r7E8 02 43 00\r\r>",
             "answered 7E8:4300 -7E9:11"},
            {"all refuse", "04", "7E8 03 7F 04 22 00 00 00 00\r\r>", "refused -7E8:22"},
            {"a refusal of something else", "04", "7E8 03 7F 03 22\r\r>", "unreadable"},
            {"put off, then answered", "03", "7E8 03 7F 03 78\r7E8 04 43 01 04 20\r\r>",
             "answered 7E8:43010420"},
            {"put off while another answers", "03", "7E9 03 7F 03 78\r7E8 04 43 01 04 20\r\r>",
             "refused 7E8:43010420 -7E9:78"},
        });
}

TEST(Reply, FrameNumbersBeginAgainAfterFifteen) {
    std::string reply = "7E8 10 7A 43 3C";  // 60 codes in 122 bytes: 6, then 7 in each frame
    std::string message = "433C";
    std::string numbered = "07A\r0: 43 3C";
    int bytes = 2;
    int frame = 0;
    const auto add = [&](int byte) {
        if (bytes >= 6 && (bytes - 6) % 7 == 0) {
            ++frame;
            reply += "\r7E8 2" + Hex(static_cast<unsigned>(frame) & 15U, 1);
            numbered += "\r" + Hex(static_cast<unsigned>(frame) & 15U, 1) + ":";
        }
        const std::string hex = Hex(static_cast<unsigned>(byte), 2);
        reply += " " + hex;
        numbered += " " + hex;
        message += hex;
        ++bytes;
    };
    for (int code = 1; code <= 60; ++code) {
        add(1);
        add(code);
    }
    ASSERT_EQ(frame, 17);
    EXPECT_EQ(Shown(TakeApart(reply + "\r\r>", {3}, Bus::Can11, true)), "answered 7E8:" + message);
    EXPECT_EQ(Shown(TakeApart(numbered + "\r\r>", {3}, Bus::Can11, false)),
              "answered 0:" + message);
}

TEST(Reply, TheOtherBusesHaveHeadersAndChecksumsOfTheirOwn) {
    Check(Bus::Can29, true,
          {{"two units", "03",
            "18 DA F1 10 10 08 43 03 01 01 01 02 \r18 DA F1 18 02 43 00 00 00 00 00 00 \r"
            "18 DA F1 10 21 01 03 00 00 00 00 00 \r\r>",
            "answered 18:4300 10:4303010101020103"},
           {"sent to somebody else", "03", "18 DA F9 10 02 43 00 \r\r>", "unreadable"}});
    Check(Bus::Keyword, true,
          {{"a code, and a unit without", "03",
            "87 F1 10 43 01 33 00 00 00 00 FF \r87 F1 18 43 00 00 00 00 00 00 D3 \r\r>",
            "answered 10:43013300000000 18:43000000000000"},
           {"the length in a byte of its own", "03", "80 F1 10 07 43 01 33 00 00 00 00 FF \r\r>",
            "answered 10:43013300000000"},
           {"refused", "04", "83 F1 10 7F 04 22 29 \r\r>", "refused -10:22"},
           {"a wrong sum", "03", "87 F1 10 43 01 33 00 00 00 00 FE \r\r>", "unreadable"},
           {"a byte lost", "03", "87 F1 10 43 01 33 00 00 00 FF \r\r>", "unreadable"},
           {"no header after all", "03", "43 01 33 00 00 00 00 \r\r>", "unreadable"}});
    Check(Bus::Iso9141, true,
          {{"a code", "03", "48 6B 10 43 01 33 00 00 00 00 3A \r\r>", "answered 10:43013300000000"},
           {"a wrong sum", "03", "48 6B 10 43 01 34 00 00 00 00 3A \r\r>", "unreadable"},
           {"one line of two broken", "03",
            "48 6B 10 43 01 33 00 00 00 00 3A \r48 6B 18 43 01 33 00 00 <DATA ERROR\r\r>",
            "unreadable 10:43013300000000"}});
    // The checksum of the digits "123456789" is 4B by the same rule: 1D, from FF, inverted.
    Check(Bus::J1850, true,
          {{"speed", "010D", "48 6B 10 41 0D 00 CA \r\r>", "answered 10:410D00"},
           {"confirmed by the receiver", "010D", "48 6B 10 41 0D 00 CA F1 \r\r>",
            "answered 10:410D00"},
           {"a wrong sum", "010D", "48 6B 10 41 0D 01 CA \r\r>", "unreadable"}});
}

TEST(Reply, WithoutHeadersMessagesAreTheLines) {
    Check(Bus::Can11, false,
          {{"numbered frames with their length", "03",
            "00A \r0: 43 04 01 33 02 45 \r1: 01 23 04 56 00 00 00 \r\r>",
            "answered 0:43040133024501230456"},
           {"one unit after the other", "03",
            "008\r0: 43 03 01 01 01 02\r1: 01 03\r43 00\r008\r0: 43 03 07 00 07 01\r1: 07 02\r\r>",
            "answered 0:4303010101020103 0:4300 0:4303070007010702"},
           {"in turns, and still told apart", "03",
            "010\r0: 43 07 01 01 01 02\r1: 01 03 01 04 01 05 01\r008\r0: 43 03 07 00 07 01\r"
            "2: 06 01 07\r1: 07 02\r\r>",
            "answered 0:43070101010201030104010501060107 0:4303070007010702"},
           {"in turns, not to be told apart", "03",
            "008\r0: 43 03 01 01 01 02\r008\r0: 43 03 07 00 07 01\r1: 01 03\r1: 07 02\r\r>",
            "unreadable"},
           {"a lost frame", "03", "00A\r1: 01 23 04 56 00 00 00\r43 00\r\r>", "unreadable"},
           {"no length", "03", "0: 43 03 01 01 01 02\r1: 01 03\r\r>", "unreadable"}});
    Check(Bus::Keyword, false,
          {{"three units, one of them without a code", "03",
            "43 01 33 00 00 00 00 \r43 00 00 00 00 00 00 \r43 07 00 00 00 00 00 \r\r>",
            "answered 0:43013300000000 0:43000000000000 0:43070000000000"},
           {"no length lines on this bus", "03", "00A\r\r>", "unreadable"}});
}

TEST(Reply, WhatTheInterfaceSaysIsToldFromData) {
    Check(Bus::Can11, true,
          {{"echo and search in front", "0101", "0101\rSEARCHING...\r7E8 06 41 01 81 07 65 04\r\r>",
            "answered 7E8:410181076504"},
           {"data on the line of the search", "0101",
            "01 01\r\nSEARCHING...7E8 06 41 01 81 07 65 04\r\n\r\n>", "answered 7E8:410181076504"},
           {"lower case", "0101", "7e8 06 41 01 81 07 65 04\r>", "answered 7E8:410181076504"},
           {"no data", "03", "SEARCHING...\rNO DATA\r\r>", "no data"},
           {"not reached", "03", "SEARCHING...UNABLE TO CONNECT\r\r>", "fault"},
           {"interrupted behind data", "03", "7E8 02 43 00\rSTOPPED\r\r>", "fault 7E8:4300"},
           {"too much", "03", "7E8 10 0A 43 04 01 33 02 45 \rBUFFER FULL\r\r>", "fault"},
           {"a bad line", "03", "7E8 02 43 00\r7E9 04 43 01 <RX ERROR\r\r>", "unreadable 7E8:4300"},
           {"not understood", "03", "?\r\r>", "?"},
           {"other words", "03", "HELLO\r\r>", "unreadable"},
           {"an empty reply", "03", "\r>", "unreadable"},
           {"no prompt", "03", "7E8 02 43 00\r", "unfinished"},
           {"silence", "03", "", "unfinished"}});
    Check(Bus::Keyword, false,
          {{"the bus was woken", "010D", "BUS INIT: ...OK\r41 0D 00 \r\r>", "answered 0:410D00"},
           {"data at once", "010D", "BUS INIT: OK41 0D 00 \r\r>", "answered 0:410D00"},
           {"it was not", "010D", "BUS INIT: ...ERROR\r\r>", "fault"}});
    EXPECT_EQ(TakeApart("SEARCHING...\rCAN ERROR\r\r>", {3}, Bus::Can11, true).Words, "CAN ERROR");
}

TEST(Reply, ACodeListIsTakenByItsBus) {
    const struct {
        Bus On;
        const char* Message;
        const char* Codes;
    } rows[] = {
        {Bus::Can11, "43010420", "P0420"},
        {Bus::Can29, "4300", ""},
        {Bus::Can11, "4304013342AB8123FFFF", "P0133 C02AB B0123 U3FFF"},
        {Bus::Can11, "47010420000000", "odd"},
        {Bus::Can11, "4701042000000000", "P0420"},
        {Bus::Can11, "43020420", "odd"},
        {Bus::Can11, "430104200421", "odd"},
        {Bus::Can11, "43", "odd"},
        {Bus::Keyword, "43010420000000", "P0104 P2000"},
        {Bus::J1850, "43042000000000", "P0420"},
        {Bus::Iso9141, "4304200000043100", "odd"},
        {Bus::Iso9141, "43042000000431", "P0420 P0431"},
        {Bus::Iso9141, "43", ""},
        {Bus::Unknown, "43010420", "odd"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Message);
        const auto codes = CodesIn(*BytesOf(row.Message), row.On);
        std::string text = codes ? "" : "odd";
        for (const std::string& code : codes.value_or(std::vector<std::string>{}))
            text += (text.empty() ? "" : " ") + code;
        EXPECT_EQ(text, row.Codes);
    }
}

}  // namespace
}  // namespace dravik
