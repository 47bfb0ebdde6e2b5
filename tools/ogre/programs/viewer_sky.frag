#version 330

uniform samplerCube sky;

in vec3 direction;

out vec4 colour;

void main()
{
	colour = vec4(texture(sky, direction).rgb, 1.0);
}
