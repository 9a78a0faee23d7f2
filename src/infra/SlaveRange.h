#pragma once

// Slave addresses of a line ("MODBUS over Serial Line", V1.02, 2.2), and those that a controller of the series can
// have.
namespace slaverange {

constexpr int kFirst = 1;
constexpr int kLast = 247;
constexpr int kLastOfControllers = 99;

constexpr bool contains(int address)
{
    return address >= kFirst && address <= kLast;
}

} // namespace slaverange
