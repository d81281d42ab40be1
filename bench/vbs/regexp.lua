-- Patterns over a text: finds numbers with their keys, replaces words.
local rounds = tonumber(arg[1] or 40)

local function make_text(n)
  local parts = {}
  for i = 1, n do
    parts[i] = "key" .. i .. "=" .. (i * 37) % 1000 .. "; some words between"
  end
  return table.concat(parts, "\n")
end

local function work(text)
  local total = 0
  for key, number in text:gmatch("([%w_]+)=(%d+)") do
    total = total + #key + tonumber(number)
  end
  local replaced = text:gsub("words", "x"):gsub("between", "x")
  return total + #replaced
end

local text = make_text(5000)
local sum = 0
for _ = 1, rounds do
  sum = sum + work(text)
end
print(sum)
